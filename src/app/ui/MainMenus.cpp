#include "MainMenus.h"

#include "ControlRegistry.h"
#include "ToolIcons.h"
#include "VisibleText.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>

MainMenus::MainMenus(QMenuBar& bar)
{
    QMenu* file = addMenu(bar, QStringLiteral("FileMenu"));
    open = addItem(file, QStringLiteral("mnuFile"), 0, QStringLiteral("Open"));
    open->setShortcut(QKeySequence::Open);
    recent = keep(file->addMenu(QStringLiteral("Recent files")), QStringLiteral("RecentMenu"));
    clearRecent = addItem(recent, QStringLiteral("mnuRecent"), 0, QStringLiteral("Clear the list"));
    file->addSeparator();
    saveTo = addItem(file, QStringLiteral("mnuFile"), 4, QStringLiteral("Save to a file..."));
    saveTo->setShortcut(QKeySequence::Save);
    save = addItem(file, QStringLiteral("mnuFile"), 1, QStringLiteral("Save"));
    save->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    file->addSeparator();
    backups = addItem(file, QStringLiteral("mnuFile"), 3, QStringLiteral("Backups..."));
    file->addSeparator();
    exit = addItem(file, QStringLiteral("mnuFile"), 2, QStringLiteral("Exit"));
    exit->setShortcut(QKeySequence::Quit);
    exit->setMenuRole(QAction::QuitRole);
    QMenu* edit = addMenu(bar, QStringLiteral("EditMenu"));
    undo = addItem(edit, QStringLiteral("mnuEdit"), 2, QStringLiteral("Undo"));
    undo->setShortcut(QKeySequence::Undo);
    redo = addItem(edit, QStringLiteral("mnuEdit"), 3, QStringLiteral("Redo"));
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    edit->addSeparator();
    copy = addItem(edit, QStringLiteral("mnuEdit"), 0, QStringLiteral("Copy"));
    copy->setShortcut(QKeySequence::Copy);
    paste = addItem(edit, QStringLiteral("mnuEdit"), 1, QStringLiteral("Paste"));
    paste->setShortcut(QKeySequence::Paste);
    edit->addSeparator();
    find = addItem(edit, QStringLiteral("mnuEdit"), 4, QStringLiteral("Find..."));
    find->setShortcut(QKeySequence::Find);
    findNext = addItem(edit, QStringLiteral("mnuEdit"), 5, QStringLiteral("Find next"));
    findNext->setShortcut(Qt::Key_F3);
    findPrevious = addItem(edit, QStringLiteral("mnuEdit"), 6, QStringLiteral("Find previous"));
    findPrevious->setShortcut(Qt::SHIFT | Qt::Key_F3);
    goToTag = addItem(edit, QStringLiteral("mnuEdit"), 7, QStringLiteral("Go to tag..."));
    goToTag->setShortcut(Qt::CTRL | Qt::Key_G);
    QMenu* view = addMenu(bar, QStringLiteral("ViewMenu"));
    zoomIn = addItem(view, QStringLiteral("mnuView"), 0, QStringLiteral("Zoom in"));
    zoomIn->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    zoomOut = addItem(view, QStringLiteral("mnuView"), 1, QStringLiteral("Zoom out"));
    zoomOut->setShortcut(Qt::CTRL | Qt::Key_Minus);
    zoomPlain = addItem(view, QStringLiteral("mnuView"), 2, QStringLiteral("Original size"));
    zoomPlain->setShortcut(Qt::CTRL | Qt::Key_0);
    QMenu* kx = addMenu(bar, QStringLiteral("KXMenu"));
    comm = addItem(kx, QStringLiteral("mnuKX"), 0, QStringLiteral("Comm"));
    comm->setShortcut(Qt::Key_F8);
    recv = addItem(kx, QStringLiteral("mnuKX"), 1, QStringLiteral("Recv"));
    recv->setShortcut(Qt::Key_F5);
    send = addItem(kx, QStringLiteral("mnuKX"), 2, QStringLiteral("Send"));
    send->setShortcut(Qt::Key_F6);
    review = addItem(kx, QStringLiteral("mnuKX"), 4, QStringLiteral("Review and write..."));
    review->setShortcut(Qt::Key_F7);
    kx->addSeparator();
    traffic = addItem(kx, QStringLiteral("mnuKX"), 3, QStringLiteral("Traffic"));
    traffic->setShortcut(Qt::CTRL | Qt::Key_T);
    history = addItem(kx, QStringLiteral("mnuKX"), 5, QStringLiteral("History..."));
    history->setShortcut(Qt::CTRL | Qt::Key_H);
    QMenu* settings = addMenu(bar, QStringLiteral("OptionMenu"));
    option = addItem(settings, QStringLiteral("mnuOption"), 0, QStringLiteral("Option"));
    option->setShortcut(Qt::CTRL | Qt::Key_Comma);
    settings->addSeparator();
    reset = addItem(settings, QStringLiteral("mnuOption"), 1, QStringLiteral("Reset settings..."));
    QMenu* about = addMenu(bar, QStringLiteral("HelpMenu"));
    help = addItem(about, QStringLiteral("mnuHelp"), 0, QStringLiteral("Help"));
    help->setShortcut(Qt::Key_F1);
    simulator = addItem(about, QStringLiteral("mnuHelp"), 3, QStringLiteral("Try the simulator"));
    diagnostics = addItem(about, QStringLiteral("mnuHelp"), 2, QStringLiteral("Copy diagnostics"));
    about->addSeparator();
    version = addItem(about, QStringLiteral("mnuHelp"), 1, QStringLiteral("Version"));
    showIcons();
}

void MainMenus::showIcons()
{
    const std::pair<QAction*, const char*> pictures[] = {
        {open, "Open"}, {save, "Save"},       {exit, "Exit"},     {comm, "Comm"}, {recv, "Recv"},
        {send, "Send"}, {traffic, "Traffic"}, {option, "Option"}, {help, "Help"}, {version, "Version"}};
    for (const auto& [action, name] : pictures)
        action->setIcon(toolIcon(QLatin1String(name)));
}

void MainMenus::showRecent(const QStringList& files, const std::function<void(const QString&)>& choose)
{
    const auto items = recent->actions();
    for (QAction* item : items) {
        if (item != clearRecent)
            delete item;
    }
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QFileInfo file(files.at(i));
        QString caption = platform::visibleText(QStringLiteral("%1 (%2)").arg(file.fileName(), file.absolutePath()));
        auto* item =
            new QAction(QStringLiteral("&%1 %2").arg(i + 1).arg(caption.replace(u'&', QStringLiteral("&&"))), recent);
        QObject::connect(
            item, &QAction::triggered, recent, [choose, path = files.at(i)] { choose(path); },
            Qt::QueuedConnection); // the menu is done with the item before the list changes
        recent->insertAction(clearRecent, item);
    }
    recent->insertSeparator(clearRecent);
}

QMenu* MainMenus::addMenu(QMenuBar& bar, const QString& name)
{
    return keep(bar.addMenu(name), name);
}

QMenu* MainMenus::keep(QMenu* menu, const QString& name)
{
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
