#pragma once

#include <QTextBrowser>

#include <functional>

namespace platform {

// The pages of one manual: a folder of HTML files with their pictures and style sheet. Nothing outside of the folder is
// shown or loaded. A page or a folder that is missing is reported in place of the page.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    using Translate = std::function<QString(const QString&)>;

    explicit HelpBrowser(Translate translate, QWidget* parent = nullptr);

    // folder: machine path; page: bare file name; anchor: an id on the page, may be empty.
    void showPage(const QString& folder, const QString& page, const QString& anchor);
    bool isMissing() const; // the page at hand could not be read
    QString folder() const { return m_folder; }
    void resetZoom() { setFont(m_ownFont); }

    QVariant loadResource(int type, const QUrl& name) override;

Q_SIGNALS:
    void linkRefused(const QString& address); // it leads out of the manual

protected:
    void changeEvent(QEvent* event) override;

private:
    void follow(const QUrl& link);
    bool isInside(const QUrl& address) const;
    bool isReadable(const QUrl& address) const;
    QString missingText(const QString& file) const;
    void setColors();

    Translate m_translate;
    QString m_folder;
    QFont m_ownFont;
    bool m_isReloading = false;
};

} // namespace platform
