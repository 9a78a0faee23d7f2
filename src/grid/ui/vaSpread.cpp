#include "vaSpread.h"

#include "PaletteColors.h"

#include <QHeaderView>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace platform {

namespace {

constexpr double kFrameWidth = 2;
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
    // A window that waits for a dialog keeps its grid as it is.
    QPalette colors = palette();
    colors.setBrush(QPalette::Disabled, QPalette::Base, colors.brush(QPalette::Active, QPalette::Base));
    setPalette(colors);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int section, int, int size) { onSectionResized(section, size); });
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

// The font of a cell that has none of its own: sizes follow it.
CellFont vaSpread::unitFont() const
{
    return m_grid == nullptr ? CellFont() : m_grid->fontOf(Cell());
}

double vaSpread::pixelsPerUnit()
{
    return m_fonts.face(unitFont()).metrics.averageCharWidth();
}

void vaSpread::setZoom(int percent)
{
    const bool wasSeen = currentIndex().isValid() && viewport()->rect().intersects(visualRect(currentIndex()));
    m_fonts.setZoom(percent / 100.0);
    applySizes();
    if (wasSeen)
        scrollTo(currentIndex());
}

void vaSpread::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTableView::wheelEvent(event);
        return;
    }
    m_wheelAngle += event->angleDelta().y();
    const int steps = m_wheelAngle / QWheelEvent::DefaultDeltasPerStep;
    m_wheelAngle %= QWheelEvent::DefaultDeltasPerStep;
    if (steps != 0)
        Q_EMIT zoomWanted(steps);
    event->accept();
}

void vaSpread::applySizes()
{
    m_isSizing = true;
    for (int col = 1; col <= m_grid->maxCols(); ++col)
        setColumnWidth(col - 1, pixels(m_grid->colWidth(col) * pixelsPerUnit()));
    for (int row = 1; row <= m_grid->maxRows(); ++row)
        setRowHeight(row - 1, pixels(m_grid->rowHeight(row) * pixelsPerPoint() * m_fonts.zoom()));
    m_isSizing = false;
    viewport()->update();
}

void vaSpread::paintEvent(QPaintEvent* event)
{
    if (m_grid == nullptr || !m_grid->isShown())
        return;
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    paintFrames(painter);
}

void vaSpread::setPale(bool pale)
{
    m_delegate.setPale(pale);
    viewport()->update();
}

void vaSpread::setHighlights(const std::vector<CellPlace>& places)
{
    m_delegate.setHighlights(places);
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
        painter.setPen(QPen(m_delegate.shown(paintColor(frame.color), palette()), kFrameWidth));
        painter.drawRect(first.united(last));
    }
}

void vaSpread::showColHeaders()
{
    horizontalHeader()->setVisible(true);
    horizontalHeader()->setHighlightSections(false);
}

void vaSpread::onSectionResized(int section, int pixelWidth)
{
    if (!m_isSizing && m_grid != nullptr)
        m_grid->setColWidth(section + 1, pixelWidth / pixelsPerUnit());
}

} // namespace platform
