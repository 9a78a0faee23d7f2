#pragma once

#include <QToolBar>

class MainMenus;
class QAction;

// Toolbar of the main window: nine buttons. Each is the command of the menu; only "Send" is one of its own, which asks
// before it sends. Captions are the English keys until they are translated.
class MainToolbar : public QToolBar
{
    Q_OBJECT

public:
    explicit MainToolbar(const MainMenus& menus, QWidget* parent = nullptr);

    QAction* send() const { return m_send; }
    // In the order of their numbers in language files.
    const QList<QAction*>& numbered() const { return m_numbered; }

private:
    QAction* m_send;
    QList<QAction*> m_numbered;
};
