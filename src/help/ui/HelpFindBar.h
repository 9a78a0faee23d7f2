#pragma once

#include "ManualSearch.h"

#include <QTextDocument>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;
class QToolButton;

namespace platform {

class HelpBrowser;

// Finds a text in the manual that a browser shows: a list of the places on all pages grows and shrinks as the text is
// typed; the keys find it on the page at hand, onwards from what is selected and around at the end. The browser is
// kept.
class HelpFindBar : public QWidget
{
    Q_OBJECT

public:
    using Translate = std::function<QString(const QString&)>;

    explicit HelpFindBar(HelpBrowser& browser, QWidget* parent = nullptr);

    void translate(const Translate& translate);
    void open(); // with the cursor in the field
    void findNext() { find({}); }
    void findPrevious() { find(QTextDocument::FindBackward); }

    bool eventFilter(QObject* watched, QEvent* event) override; // the arrow keys of the field move in the list

private:
    void setupRow();
    void listHits();
    void showHit(int row);
    void find(QTextDocument::FindFlags flags);

    HelpBrowser& m_browser;
    ManualSearch m_search;
    std::vector<ManualSearch::Hit> m_found;
    QListWidget* m_hits;
    QLabel* m_caption;
    QLineEdit* m_text;
    QToolButton* m_previous;
    QToolButton* m_next;
    QLabel* m_result;
    QString m_notFound;
    QString m_placesText;
};

} // namespace platform
