#pragma once

#include <QTextDocument>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QToolButton;

namespace platform {

// Finds a text on the page of a browser, onwards from what is selected and around at the end. The browser is kept.
class HelpFindBar : public QWidget
{
    Q_OBJECT

public:
    using Translate = std::function<QString(const QString&)>;

    explicit HelpFindBar(QTextBrowser& browser, QWidget* parent = nullptr);

    void translate(const Translate& translate);
    void open(); // with the cursor in the field
    void findNext() { find({}); }
    void findPrevious() { find(QTextDocument::FindBackward); }

private:
    void find(QTextDocument::FindFlags flags);

    QTextBrowser& m_browser;
    QLabel* m_caption;
    QLineEdit* m_text;
    QToolButton* m_previous;
    QToolButton* m_next;
    QLabel* m_result;
    QString m_notFound;
};

} // namespace platform
