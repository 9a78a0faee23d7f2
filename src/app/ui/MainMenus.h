#pragma once

#include <QStringList>

#include <functional>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace platform {
class ControlRegistry;
}

// The menus of the main window. The texts that they are built with are the keys of the language files.
class MainMenus
{
public:
    explicit MainMenus(QMenuBar& bar);

    QAction* open = nullptr;
    QAction* save = nullptr;   // asks for the name
    QAction* saveTo = nullptr; // without a question where there is a file
    QMenu* recent = nullptr;   // files, filled by showRecent
    QAction* clearRecent = nullptr;
    QAction* exit = nullptr;
    QAction* copy = nullptr;
    QAction* paste = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
    QAction* find = nullptr;
    QAction* findNext = nullptr;
    QAction* findPrevious = nullptr;
    QAction* goToTag = nullptr;
    QAction* zoomIn = nullptr;
    QAction* zoomOut = nullptr;
    QAction* zoomPlain = nullptr;
    QAction* comm = nullptr;
    QAction* recv = nullptr;
    QAction* send = nullptr;
    QAction* review = nullptr;
    QAction* history = nullptr;
    QAction* backups = nullptr;
    QAction* traffic = nullptr;
    QAction* option = nullptr;
    QAction* reset = nullptr;
    QAction* help = nullptr;
    QAction* simulator = nullptr;
    QAction* diagnostics = nullptr;
    QAction* version = nullptr;

    // The files to choose from, newest first; choose is called with the file of the item that was triggered.
    void showRecent(const QStringList& files, const std::function<void(const QString&)>& choose);

    // Under the names and places of their control arrays.
    void registerAt(platform::ControlRegistry& registry) const;

private:
    struct Item
    {
        QAction* action;
        QString array;
        int index;
    };

    void showIcons();
    QMenu* addMenu(QMenuBar& bar, const QString& name);
    QMenu* keep(QMenu* menu, const QString& name);
    QAction* addItem(QMenu* menu, const QString& array, int index, const QString& caption);

    std::vector<QMenu*> m_menus;
    std::vector<Item> m_items;
};
