#include "RecordTable.h"

#include "GridModel.h"
#include "clsLibrary.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>
#include <numeric>
#include <utility>

RecordTable::RecordTable(const clsLibrary& library, const QString& formName, std::vector<double> widths,
                         QWidget* parent)
    : QTableView(parent), m_library(library), m_formName(formName), m_widths(std::move(widths))
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(this, &QTableView::doubleClicked, this, &RecordTable::openWanted);
}

void RecordTable::setRowHeight()
{
    const int space = style()->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, this);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * space);
}

// What a font calls its average character may be as wide as a Chinese one.
int RecordTable::digitWidth(const QWidget& widget)
{
    return widget.fontMetrics().horizontalAdvance(u'0');
}

void RecordTable::loadColumns()
{
    const double unit = digitWidth(*this);
    const int columns = static_cast<int>(m_widths.size());
    QHeaderView* headers = horizontalHeader();
    platform::GridModel widths;
    widths.setMaxCols(columns);
    for (int i = 0; i < columns; ++i)
        widths.setColWidth(i + 1, std::max(m_widths[static_cast<size_t>(i)], headers->sectionSizeHint(i) / unit));
    m_library.loadColSize(widths, m_formName, QString());
    for (int i = 0; i < columns; ++i) {
        const double pixels = widths.colWidth(i + 1) * unit;
        headers->resizeSection(i, std::max(qRound(pixels), headers->minimumSectionSize()));
    }
}

void RecordTable::saveColumns() const
{
    const int columns = static_cast<int>(m_widths.size());
    platform::GridModel widths;
    widths.setMaxCols(columns);
    for (int i = 0; i < columns; ++i)
        widths.setColWidth(i + 1, static_cast<double>(columnWidth(i)) / digitWidth(*this));
    m_library.saveColSize(widths, m_formName, QString());
}

std::vector<int> RecordTable::chosenRows() const
{
    std::vector<int> rows;
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.push_back(index.row());
    if (rows.empty()) {
        rows.resize(static_cast<size_t>(model()->rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void RecordTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        Q_EMIT copyWanted();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT openWanted();
    else
        QTableView::keyPressEvent(event);
}

void RecordTable::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        setRowHeight();
    QTableView::changeEvent(event);
}
