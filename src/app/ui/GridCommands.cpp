#include "GridCommands.h"

#include "CellEditor.h"
#include "ColumnLayout.h"
#include "FindBar.h"
#include "MainGrid.h"
#include "MainMenus.h"
#include "Zoom.h"
#include "clsKX.h"
#include "clsLibrary.h"
#include "vaSpread.h"

#include <QAction>

namespace {

const QString kZoomSection = QStringLiteral("frmMain"); // of the layout file: the window's

} // namespace

GridCommands::GridCommands(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    connectEdits();
    connectFinding();
    connectZoom();
    setZoom(columnlayout::loadZoom(m_parts.kx.library().context(), kZoomSection));
}

void GridCommands::connectEdits()
{
    const MainMenus& menus = m_parts.menus;
    platform::vaSpread* sheet = &m_parts.grid.sheet();
    CellEditor* editor = &m_parts.editor;
    connect(menus.copy, &QAction::triggered, sheet, &platform::vaSpread::requestCopy);
    connect(menus.paste, &QAction::triggered, sheet, &platform::vaSpread::requestPaste);
    connect(menus.undo, &QAction::triggered, sheet, &platform::vaSpread::requestUndo);
    connect(menus.redo, &QAction::triggered, sheet, &platform::vaSpread::requestRedo);
    connect(sheet, &platform::vaSpread::undoRequested, editor, &CellEditor::undo);
    connect(sheet, &platform::vaSpread::redoRequested, editor, &CellEditor::redo);
    const auto showHistory = [this] {
        m_parts.menus.undo->setEnabled(m_parts.editor.canUndo());
        m_parts.menus.redo->setEnabled(m_parts.editor.canRedo());
    };
    connect(editor, &CellEditor::historyChanged, this, showHistory);
    showHistory();
}

void GridCommands::connectFinding()
{
    const MainMenus& menus = m_parts.menus;
    connect(menus.find, &QAction::triggered, this, [this] { bar().openText(); });
    connect(menus.findNext, &QAction::triggered, this, [this] { bar().findNext(); });
    connect(menus.findPrevious, &QAction::triggered, this, [this] { bar().findPrevious(); });
    connect(menus.goToTag, &QAction::triggered, this, [this] { bar().openTag(); });
}

FindBar& GridCommands::bar()
{
    if (m_find == nullptr) {
        m_find = new FindBar(m_parts.kx, m_parts.grid.sheet(), &m_parts.grid);
        m_parts.grid.addBar(*m_find);
    }
    return *m_find;
}

void GridCommands::connectZoom()
{
    const MainMenus& menus = m_parts.menus;
    const auto zoom = [this](int steps) { setZoom(platform::zoomAfter(m_zoom, steps)); };
    connect(menus.zoomIn, &QAction::triggered, this, [zoom] { zoom(1); });
    connect(menus.zoomOut, &QAction::triggered, this, [zoom] { zoom(-1); });
    connect(menus.zoomPlain, &QAction::triggered, this, [this] { setZoom(platform::kPlainZoom); });
    connect(&m_parts.grid.sheet(), &platform::vaSpread::zoomWanted, this, zoom);
}

void GridCommands::setZoom(int percent)
{
    m_zoom = percent;
    m_parts.grid.sheet().setZoom(percent);
    m_parts.menus.zoomIn->setEnabled(percent < platform::kLargestZoom);
    m_parts.menus.zoomOut->setEnabled(percent > platform::kSmallestZoom);
}

void GridCommands::save()
{
    columnlayout::saveZoom(m_parts.kx.library().context(), kZoomSection, m_zoom);
}

void GridCommands::translate()
{
    if (m_find != nullptr)
        m_find->translate();
}

void GridCommands::setEnabled(bool hasGrid)
{
    const MainMenus& menus = m_parts.menus;
    for (QAction* action : {menus.paste, menus.find, menus.findNext, menus.findPrevious, menus.goToTag})
        action->setEnabled(hasGrid);
}
