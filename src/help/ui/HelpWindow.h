#pragma once

#include "HelpBrowser.h"

#include <QMainWindow>
#include <QPointer>

class QAction;
class QToolBar;

namespace platform {

class HelpFindBar;

// The manual in a window of the program. It belongs to no other window and stays usable while a dialog waits for an
// answer, whichever dialog that is. It remembers nothing when it is closed.
//
// translate: the texts of the window in the language in use, asked at every showPage.
class HelpWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HelpWindow(HelpBrowser::Translate translate, QWidget* parent = nullptr);
    ~HelpWindow() override;

    // Shows the window, beside the one that is active; where it is open already it stays where it is. folder: machine
    // path of the manual.
    void showPage(const QString& folder, const QString& page, const QString& anchor = {});

    static void closeAll(); // every help window of the program

    const HelpBrowser& browser() const { return *m_browser; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setupActions();
    QAction* addAction(const char* objectName, const char* caption, const QList<QKeySequence>& keys);
    void translateTexts();
    void print();
    void comeBeside(const QWidget& explained);
    void stayUsable();

    HelpBrowser::Translate m_translate;
    HelpBrowser* m_browser;
    HelpFindBar* m_findBar;
    QToolBar* m_toolBar;
    QPointer<QWindow> m_dialog; // the modal dialog that the window stands over
};

} // namespace platform
