#include "GridMenu.h"

#include "CellEditor.h"
#include "HeldValue.h"
#include "VisibleText.h"
#include "WrittenItems.h"
#include "clsKX.h"
#include "clsLibrary.h"
#include "vaSpread.h"

#include <QContextMenuEvent>
#include <QMenu>

GridMenu::GridMenu(platform::vaSpread& sheet, CellEditor& editor, const clsLibrary& library)
    : QObject(&sheet), m_sheet(sheet), m_editor(editor), m_library(library)
{
    sheet.installEventFilter(this);
    sheet.viewport()->installEventFilter(this);
}

bool GridMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ContextMenu)
        return QObject::eventFilter(watched, event);
    open(*static_cast<QContextMenuEvent*>(event));
    return true;
}

// The key opens it at the current cell, the mouse at the one below the pointer, which becomes the current one.
void GridMenu::open(const QContextMenuEvent& event)
{
    const bool isByKey = event.reason() == QContextMenuEvent::Keyboard;
    const QModelIndex at =
        isByKey ? m_sheet.currentIndex() : m_sheet.indexAt(m_sheet.viewport()->mapFromGlobal(event.globalPos()));
    if (!at.isValid())
        return;
    if (!m_sheet.selectionModel()->isSelected(at))
        m_sheet.setCurrentCell(at.column() + 1, at.row() + 1);
    auto* menu = new QMenu(&m_sheet);
    menu->setObjectName(QStringLiteral("CellMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addCommands(*menu, at.column() + 1, at.row() + 1);
    menu->popup(isByKey ? m_sheet.viewport()->mapToGlobal(m_sheet.visualRect(at).bottomLeft()) : event.globalPos());
}

void GridMenu::addCommands(QMenu& menu, int col, int row)
{
    const clsKX& kx = m_editor.model();
    const clsData* item = kx.getDataByRC(row, col);
    const bool isWrittenItem = item != nullptr && isWritten(kx.data(), *item);
    const auto add = [&menu, this](const char* english, bool isEnabled, auto command) {
        QAction* action = menu.addAction(platform::visibleText(m_library.tranStr(QString::fromLatin1(english))));
        action->setEnabled(isEnabled);
        connect(action, &QAction::triggered, &m_editor, command, Qt::QueuedConnection); // when the menu has gone
    };
    const bool mayWrite = isWrittenItem && !m_library.context().settings.get().neverWrites();
    add("Revert to the controller's value", m_editor.canRevert(col, row),
        [this, col, row] { m_editor.revert(col, row); });
    menu.addSeparator();
    add("Write this parameter", mayWrite, [this, col, row] { m_editor.writeItem(col, row); });
    add("Write this block", mayWrite && kx.getBlockByNo(item->BlockNo()) != nullptr,
        [this, col, row] { m_editor.writeBlockOf(col, row); });
    menu.addSeparator();
    const bool hasCause = item != nullptr && item->cause.kind == ChangeCause::Kind::Followed;
    add("Go to cause", hasCause, [this, tag = hasCause ? item->cause.tag : QString()] {
        const clsData* cause = m_editor.model().getDataByTag(tag);
        if (cause != nullptr && cause->Visible())
            m_sheet.setCurrentCell(cause->Col(), cause->Row());
    });
    menu.addSeparator();
    add("Copy", true, [this] { m_sheet.requestCopy(); });
    add("Paste", true, [this] { m_sheet.requestPaste(); });
}
