#include "MainMenus.h"

#include "ControlRegistry.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

MainMenus::MainMenus(QMenuBar& bar)
{
    QMenu* file = addMenu(bar, QStringLiteral("FileMenu"));
    open = addItem(file, QStringLiteral("mnuFile"), 0, QStringLiteral("Open"));
    open->setShortcut(QKeySequence::Open);
    save = addItem(file, QStringLiteral("mnuFile"), 1, QStringLiteral("Save"));
    save->setShortcut(QKeySequence::Save);
    exit = addItem(file, QStringLiteral("mnuFile"), 2, QStringLiteral("Exit"));
    exit->setShortcut(QKeySequence::Quit);
    exit->setMenuRole(QAction::QuitRole);
    QMenu* edit = addMenu(bar, QStringLiteral("EditMenu"));
    copy = addItem(edit, QStringLiteral("mnuEdit"), 0, QStringLiteral("Copy"));
    copy->setShortcut(QKeySequence::Copy);
    paste = addItem(edit, QStringLiteral("mnuEdit"), 1, QStringLiteral("Paste"));
    paste->setShortcut(QKeySequence::Paste);
    undo = addItem(edit, QStringLiteral("mnuEdit"), 2, QStringLiteral("Undo"));
    undo->setShortcut(QKeySequence::Undo);
    redo = addItem(edit, QStringLiteral("mnuEdit"), 3, QStringLiteral("Redo"));
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    QMenu* kx = addMenu(bar, QStringLiteral("KXMenu"));
    comm = addItem(kx, QStringLiteral("mnuKX"), 0, QStringLiteral("Comm"));
    recv = addItem(kx, QStringLiteral("mnuKX"), 1, QStringLiteral("Recv"));
    recv->setShortcut(Qt::Key_F5);
    send = addItem(kx, QStringLiteral("mnuKX"), 2, QStringLiteral("Send"));
    send->setShortcut(Qt::Key_F6);
    QMenu* settings = addMenu(bar, QStringLiteral("OptionMenu"));
    option = addItem(settings, QStringLiteral("mnuOption"), 0, QStringLiteral("Option"));
    QMenu* help = addMenu(bar, QStringLiteral("HelpMenu"));
    version = addItem(help, QStringLiteral("mnuHelp"), 1, QStringLiteral("Version"));
}

QMenu* MainMenus::addMenu(QMenuBar& bar, const QString& name)
{
    QMenu* menu = bar.addMenu(name);
    menu->setObjectName(name);
    m_menus.push_back(menu);
    return menu;
}

QAction* MainMenus::addItem(QMenu* menu, const QString& array, int index, const QString& caption)
{
    QAction* action = menu->addAction(caption);
    action->setObjectName(QStringLiteral("%1_%2").arg(array).arg(index));
    m_items.push_back({action, array, index});
    return action;
}

void MainMenus::registerAt(platform::ControlRegistry& registry) const
{
    for (QMenu* menu : m_menus)
        registry.add(menu, menu->objectName());
    for (const Item& item : m_items)
        registry.add(item.action, item.array, item.index);
}
