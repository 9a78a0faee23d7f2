#include "MainToolbar.h"

#include "AccessibleNames.h"
#include "MainMenus.h"
#include "ToolIcons.h"

#include <QAction>

#include <initializer_list>

MainToolbar::MainToolbar(const MainMenus& menus, QWidget* parent)
    : QToolBar(parent), m_send(new QAction(toolIcon(QStringLiteral("Send")), QStringLiteral("Send"), this)),
      m_numbered{menus.open, menus.save, menus.comm,    menus.option, menus.exit,
                 menus.recv, m_send,     menus.version, menus.help}
{
    setObjectName(QStringLiteral("tlbMain"));
    platform::nameWidget(*this, QStringLiteral("Commands"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_send->setObjectName(QStringLiteral("tlbMain_Send"));
    const std::initializer_list<QAction*> groups[] = {
        {menus.open, menus.save},
        {menus.comm, menus.recv, m_send},
        {menus.option, menus.version, menus.help},
        {menus.exit},
    };
    for (const auto& group : groups) {
        if (!actions().isEmpty())
            addSeparator();
        for (QAction* command : group) {
            command->setIconText(command->text()); // the menu's own text may be longer in a language
            addAction(command);
        }
    }
}
