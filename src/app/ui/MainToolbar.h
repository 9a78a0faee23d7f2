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

private:
    QAction* m_send;
};
