#include "MainGrid.h"

#include "AccessibleNames.h"
#include "CellClipboard.h"
#include "CellEditor.h"
#include "CellSpeech.h"
#include "StartPage.h"
#include "VisibleText.h"
#include "WidgetPlacement.h"
#include "clsINI.h"
#include "clsKX.h"
#include "clsLibrary.h"
#include "vaSpread.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kMaxSpreadSpaceTwips = 3000;

// Margin between the window's edges and the grid.
int spreadSpacePixels(clsLibrary& library)
{
    clsINI ini(library.context());
    ini.setIniPath(library.getIniFilePath(QStringLiteral("Main")));
    ini.setIniFileName(library.getIniFileName(QString()));
    const QString text =
        ini.GetIniData(QStringLiteral("Setting"), QStringLiteral("FormToSpreadSpace"), QStringLiteral("100"));
    return platform::pixels(std::clamp(library.toLong(text, 100), 0, kMaxSpreadSpaceTwips));
}

platform::ColorRef namedColor(const clsLibrary& library, const char* name)
{
    return static_cast<platform::ColorRef>(library.StrToColor(QLatin1String(name), 0));
}

} // namespace

MainGrid::MainGrid(QWidget* parent)
    : QWidget(parent), m_pages(new QStackedWidget(this)), m_sprMain(new platform::vaSpread(this)),
      m_hint(new QLabel(this)), m_start(new StartPage(this))
{
    m_sprMain->setObjectName(QStringLiteral("sprMain"));
    platform::nameWidget(*m_sprMain, QStringLiteral("Parameters"));
    m_sprMain->setGrid(&m_cells);
    m_hint->setObjectName(QStringLiteral("lblHint"));
    platform::nameWidget(*m_hint, QStringLiteral("What to do"));
    m_hint->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_hint->setWordWrap(true);
    m_hint->setAlignment(Qt::AlignCenter);
    m_pages->addWidget(m_sprMain);
    m_pages->addWidget(m_hint);
    m_pages->addWidget(m_start);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_pages, 1);
}

void MainGrid::addBar(QWidget& bar)
{
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, &bar);
}

void MainGrid::applySettings(clsLibrary& library)
{
    const int space = spreadSpacePixels(library);
    setContentsMargins(space, space, space, space);
    m_sprMain->setSelectionColors(namedColor(library, "vbHighlight"), namedColor(library, "vbHighlightText"));
}

void MainGrid::connectTo(CellEditor& editor, CellClipboard& clipboard)
{
    using platform::vaSpread;
    m_cells.setSpoken(
        [&kx = editor.model()](int row, int col) { return spokenCell(kx, col, row, kx.library().translation()); });
    connect(m_sprMain, &vaSpread::editChanged, &editor, [this, &editor](int col, int row, const QString& text) {
        if (!editor.checkCell(col, row, true, text))
            m_sprMain->refuseEntry(col, row, text);
    });
    connect(m_sprMain, &vaSpread::comboSelChange, &editor,
            [&editor](int col, int row, int choice) { editor.changeCombo(col, row, choice); });
    connect(m_sprMain, &vaSpread::buttonClicked, &editor, &CellEditor::clickCell);
    for (const auto signal : {&vaSpread::dblClick, &vaSpread::enterPressed, &vaSpread::markClicked})
        connect(m_sprMain, signal, &editor, &CellEditor::openSelect);
    connect(&editor, &CellEditor::restored, m_sprMain, &vaSpread::setCurrentCell);
    connect(m_sprMain, &vaSpread::copyRequested, &editor, [&clipboard](const platform::CellRange& range) {
        QGuiApplication::clipboard()->setText(clipboard.copy(range));
    });
    connect(m_sprMain, &vaSpread::pasteRequested, &editor,
            [&clipboard](const platform::CellRange& range, const QString& text) { clipboard.paste(range, text); });
}

void MainGrid::clearCells()
{
    m_cells.setMaxCols(0);
    m_cells.setMaxRows(0);
}

void MainGrid::showHint(const QString& text, bool isStart)
{
    m_hint->setText(platform::visibleLines(text));
    m_start->setText(text);
    m_pages->setCurrentWidget(isStart          ? static_cast<QWidget*>(m_start)
                              : text.isEmpty() ? static_cast<QWidget*>(m_sprMain)
                                               : m_hint);
    if (isStart)
        m_start->setFocus();
    const auto first = platform::firstParameter(m_cells);
    if (first && !m_sprMain->currentIndex().isValid())
        m_sprMain->setCurrentCell(first->col, first->row);
}
