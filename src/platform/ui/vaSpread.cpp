#include "vaSpread.h"

#include "PaletteColors.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace platform {

namespace {

constexpr double kFrameWidth = 2;
constexpr int kPaleAlpha = 150;
constexpr double kMaxCellPixels = 10000; // a damaged width in a definition file stays within reach of the scroll bars

int pixels(double size)
{
    return qRound(std::min(size, kMaxCellPixels));
}

} // namespace

vaSpread::vaSpread(QWidget* parent) : QTableView(parent)
{
    setItemDelegate(&m_delegate);
    setShowGrid(false);
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    horizontalHeader()->setVisible(false);
    verticalHeader()->setVisible(false);
    horizontalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setMinimumSectionSize(0);
    setAccessibleName(QStringLiteral("Parameters"));
    connect(this, &QTableView::clicked, this, &vaSpread::onClicked);
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT dblClick(index.column() + 1, index.row() + 1); });
    connect(&m_delegate, &SpreadDelegate::textEntered, this, &vaSpread::editChanged);
    connect(&m_delegate, &SpreadDelegate::choiceMade, this, &vaSpread::comboSelChange);
}

vaSpread::~vaSpread()
{
    if (m_grid != nullptr)
        m_grid->setTextMeasure(nullptr);
}

void vaSpread::setGrid(GridModel* grid)
{
    if (m_grid != nullptr)
        m_grid->disconnect(this);
    m_grid = grid;
    grid->setTextMeasure(&m_measure);
    setModel(grid);
    connect(grid, &GridModel::sizesChanged, this, &vaSpread::applySizes);
    connect(grid, &GridModel::modelReset, this, &vaSpread::applySizes);
    connect(grid, &GridModel::framesChanged, this, [this] { viewport()->update(); });
    connect(grid, &GridModel::shownChanged, this, [this](bool) { viewport()->update(); });
    connect(grid, &QObject::destroyed, this, [this] { m_grid = nullptr; });
    applySizes();
}

void vaSpread::setSelectionColors(ColorRef back, ColorRef fore)
{
    QPalette colors = palette();
    colors.setColor(QPalette::Highlight, paintColor(back));
    colors.setColor(QPalette::HighlightedText, paintColor(fore));
    setPalette(colors);
}

void vaSpread::applySizes()
{
    for (int col = 1; col <= m_grid->maxCols(); ++col)
        setColumnWidth(col - 1, pixels(m_grid->colWidth(col) * m_fonts.pixelsPerUnit()));
    for (int row = 1; row <= m_grid->maxRows(); ++row)
        setRowHeight(row - 1, pixels(m_grid->rowHeight(row) * pixelsPerPoint()));
    viewport()->update();
}

void vaSpread::paintEvent(QPaintEvent* event)
{
    if (m_grid == nullptr || !m_grid->isShown())
        return;
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    paintFrames(painter);
    if (m_pale) {
        QColor veil = palette().color(QPalette::Base);
        veil.setAlpha(kPaleAlpha);
        painter.fillRect(viewport()->rect(), veil);
    }
}

void vaSpread::setPale(bool pale)
{
    m_pale = pale;
    viewport()->update();
}

void vaSpread::paintFrames(QPainter& painter) const
{
    for (const CellFrame& frame : m_grid->frames()) {
        const QRect first = visualRect(m_grid->index(frame.range.row - 1, frame.range.col - 1));
        const QRect last = visualRect(m_grid->index(std::min(frame.range.row2, m_grid->maxRows()) - 1,
                                                    std::min(frame.range.col2, m_grid->maxCols()) - 1));
        if (!first.isValid() || !last.isValid())
            continue;
        painter.setPen(QPen(paintColor(frame.color), kFrameWidth));
        painter.drawRect(first.united(last));
    }
}

void vaSpread::onClicked(const QModelIndex& index)
{
    const Cell& cell = m_grid->cell(index.row() + 1, index.column() + 1);
    if (cell.takesClick())
        Q_EMIT buttonClicked(index.column() + 1, index.row() + 1);
}

void vaSpread::keyPressEvent(QKeyEvent* event)
{
    const bool opensCombo =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier) != 0);
    if (event->key() == Qt::Key_Space && currentIndex().isValid())
        onClicked(currentIndex());
    else if (opensCombo && currentIndex().isValid())
        edit(currentIndex());
    else
        QTableView::keyPressEvent(event);
}

} // namespace platform
