#include "MainToolbar.h"

#include "ToolIcons.h"

#include <QAction>

MainToolbar::MainToolbar(QWidget* parent) : QToolBar(parent)
{
    setObjectName(QStringLiteral("tlbMain"));
    setAccessibleName(QStringLiteral("Commands"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const char* group : {"Open Save", "Comm Option Exit", "Recv Send", "Version Help"}) {
        if (!m_buttons.isEmpty())
            addSeparator();
        const QStringList keys = QString::fromLatin1(group).split(u' ');
        for (const QString& key : keys)
            addButton(key);
    }
}

void MainToolbar::addButton(const QString& key)
{
    QAction* action = addAction(toolIcon(key), key);
    action->setObjectName(QStringLiteral("tlbMain_") + key);
    m_buttons.insert(key, action);
}
