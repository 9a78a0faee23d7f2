#pragma once

#include <QString>

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
    QAction* save = nullptr;
    QAction* exit = nullptr;
    QAction* copy = nullptr;
    QAction* paste = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
    QAction* comm = nullptr;
    QAction* recv = nullptr;
    QAction* send = nullptr;
    QAction* option = nullptr;
    QAction* version = nullptr;

    // Under the names and places of their control arrays.
    void registerAt(platform::ControlRegistry& registry) const;

private:
    struct Item
    {
        QAction* action;
        QString array;
        int index;
    };

    QMenu* addMenu(QMenuBar& bar, const QString& name);
    QAction* addItem(QMenu* menu, const QString& array, int index, const QString& caption);

    std::vector<QMenu*> m_menus;
    std::vector<Item> m_items;
};
