#include "GridModel.h"

#include "TextWidth.h"

#include <algorithm>

namespace platform {

namespace {

const TextMeasure kEstimate;
constexpr double kTextMargin = 1.6; // average characters beside the widest text
constexpr double kDefaultPointSize = 11;
constexpr double kLineFactor = 1.4; // height of a line over the point size
constexpr double kEmptyColumn = 1;  // average characters between the groups of a screen
constexpr double kComboButton = 3;  // average characters of a combo box's arrow
constexpr double kButtonEdges = 1;  // average characters of a button's edges
constexpr double kLampRoom = 2;
constexpr double kSwitchRoom = 5;
constexpr double kTableRoom = 3;

Qt::Alignment alignmentOf(HAlign align)
{
    return Qt::AlignVCenter | (align == HAlign::Right    ? Qt::AlignRight
                               : align == HAlign::Center ? Qt::AlignHCenter
                                                         : Qt::AlignLeft);
}

double extraWidth(const Cell& cell)
{
    switch (cell.sign) {
    case CellSign::State:
        return kLampRoom;
    case CellSign::Switch:
        return kSwitchRoom;
    case CellSign::Table:
        return kTableRoom;
    case CellSign::None:
        break;
    }
    return cell.type == CellType::ComboBox ? kComboButton : cell.type == CellType::Button ? kButtonEdges : 0;
}

} // namespace

double TextMeasure::widthUnits(const QString& text, const CellFont& font) const
{
    const double units = displayWidth(text);
    return font.bold ? units * 1.1 : units;
}

double TextMeasure::heightPoints(const QString& text, const CellFont& font) const
{
    return text.isEmpty() ? 0 : (font.pointSize > 0 ? font.pointSize : kDefaultPointSize) * kLineFactor;
}

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent), m_measure(&kEstimate) {}

void GridModel::setMaxRows(int rows)
{
    beginResetModel();
    m_rows = std::clamp(rows, 0, kMaxRows);
    m_cells.removeIf([this](const auto& entry) { return static_cast<int>(entry.key() >> 32U) > m_rows; });
    m_frames.removeIf([this](const CellFrame& frame) { return frame.range.row > m_rows; });
    m_rowHeights.removeIf([this](const auto& entry) { return entry.key() > m_rows; });
    endResetModel();
}

void GridModel::setMaxCols(int cols)
{
    beginResetModel();
    m_cols = std::clamp(cols, 0, kMaxCols);
    m_cells.removeIf([this](const auto& entry) { return static_cast<int>(entry.key() & 0xFFFFFFFFU) > m_cols; });
    m_frames.removeIf([this](const CellFrame& frame) { return frame.range.col > m_cols; });
    m_colHeaders.removeIf([this](const auto& entry) { return entry.key() > m_cols; });
    m_colWidths.removeIf([this](const auto& entry) { return entry.key() > m_cols; });
    endResetModel();
}

const Cell& GridModel::cell(int row, int col) const
{
    const auto found = m_cells.constFind(keyOf(row, col));
    return found == m_cells.cend() ? m_prototype : *found;
}

QVector<CellPlace> GridModel::ownCells() const
{
    QVector<CellPlace> places;
    places.reserve(m_cells.size());
    for (auto entry = m_cells.keyBegin(); entry != m_cells.keyEnd(); ++entry)
        places.append({static_cast<int>(*entry >> 32U), static_cast<int>(*entry & 0xFFFFFFFFU)});
    return places;
}

void GridModel::resetCells(const Cell& prototype)
{
    beginResetModel();
    m_prototype = prototype;
    m_cells.clear();
    m_frames.clear();
    m_rowHeights.clear();
    endResetModel();
}

Cell& GridModel::own(int row, int col)
{
    const quint64 key = keyOf(row, col);
    const auto found = m_cells.find(key);
    return found == m_cells.end() ? *m_cells.insert(key, m_prototype) : *found;
}

void GridModel::setCell(int row, int col, const Cell& cell)
{
    if (!inside(row, col) || this->cell(row, col) == cell)
        return;
    own(row, col) = cell;
    changed(row, col);
}

template <typename Value> void GridModel::setField(int row, int col, Value Cell::*field, const Value& value)
{
    if (!inside(row, col) || this->cell(row, col).*field == value)
        return;
    own(row, col).*field = value;
    changed(row, col);
}

void GridModel::setText(int row, int col, const QString& text)
{
    setField(row, col, &Cell::text, text);
}

void GridModel::setValue(int row, int col, int value)
{
    setField(row, col, &Cell::value, value);
}

void GridModel::setToolTip(int row, int col, const QString& toolTip)
{
    setField(row, col, &Cell::toolTip, toolTip);
}

void GridModel::setForeColor(int row, int col, ColorRef color)
{
    setField(row, col, &Cell::foreColor, color);
}

void GridModel::setBold(int row, int col, bool bold)
{
    CellFont font = cell(row, col).font;
    font.bold = bold;
    setField(row, col, &Cell::font, font);
}

void GridModel::setLocked(int row, int col, bool locked)
{
    setField(row, col, &Cell::locked, locked);
}

void GridModel::changed(int row, int col)
{
    m_measured = false;
    if (m_updateDepth > 0) {
        m_dirty = true;
        return;
    }
    const QModelIndex at = index(row - 1, col - 1);
    Q_EMIT dataChanged(at, at);
}

void GridModel::beginUpdate()
{
    ++m_updateDepth;
}

void GridModel::endUpdate()
{
    if (m_updateDepth == 0 || --m_updateDepth > 0 || !m_dirty)
        return;
    m_dirty = false;
    if (m_rows > 0 && m_cols > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, m_cols - 1));
    Q_EMIT framesChanged();
    Q_EMIT sizesChanged();
}

void GridModel::addFrame(const CellFrame& frame)
{
    m_frames.append(frame);
    m_dirty = m_dirty || m_updateDepth > 0;
    if (m_updateDepth == 0)
        Q_EMIT framesChanged();
}

void GridModel::setColHeader(int col, const QString& text, HAlign align)
{
    if (col < 1 || col > m_cols)
        return;
    m_colHeaders.insert(col, {text, align});
    Q_EMIT headerDataChanged(Qt::Horizontal, col - 1, col - 1);
}

double GridModel::colWidth(int col) const
{
    return m_colWidths.value(col, kDefaultColWidth);
}

void GridModel::setColWidth(int col, double width)
{
    if (col < 0 || col > m_cols || colWidth(col) == width)
        return;
    m_colWidths.insert(col, std::max(width, 0.0));
    m_dirty = m_dirty || m_updateDepth > 0;
    if (m_updateDepth == 0)
        Q_EMIT sizesChanged();
}

double GridModel::rowHeight(int row) const
{
    return m_rowHeights.value(row, kDefaultRowHeight);
}

void GridModel::setRowHeight(int row, double height)
{
    if (row < 0 || row > m_rows || rowHeight(row) == height)
        return;
    m_rowHeights.insert(row, std::max(height, 0.0));
    m_dirty = m_dirty || m_updateDepth > 0;
    if (m_updateDepth == 0)
        Q_EMIT sizesChanged();
}

// One pass over the cells answers for every column and row until a cell changes.
void GridModel::measure() const
{
    if (m_measured)
        return;
    m_measured = true;
    m_textWidths.clear();
    m_textHeights.clear();
    for (auto entry = m_cells.cbegin(); entry != m_cells.cend(); ++entry) {
        const Cell& cell = *entry;
        const int row = static_cast<int>(entry.key() >> 32U);
        const int col = static_cast<int>(entry.key() & 0xFFFFFFFFU);
        const CellFont font = fontOf(cell);
        const QString text = cell.shownText();
        double width = text.isEmpty() ? 0 : m_measure->widthUnits(text, font);
        for (const QString& choice : cell.comboList)
            width = std::max(width, m_measure->widthUnits(visibleText(choice), font));
        width += kTextMargin + extraWidth(cell);
        double& widest = m_textWidths[col];
        widest = std::max(widest, width);
        double& tallest = m_textHeights[row];
        tallest = std::max(tallest, m_measure->heightPoints(text, font));
    }
}

double GridModel::maxTextColWidth(int col) const
{
    measure();
    return m_textWidths.value(col, kEmptyColumn);
}

double GridModel::maxTextRowHeight(int row) const
{
    measure();
    return std::max(m_textHeights.value(row, 0), kDefaultRowHeight);
}

void GridModel::setTextMeasure(const TextMeasure* measure)
{
    m_measure = measure == nullptr ? &kEstimate : measure;
    m_measured = false;
}

void GridModel::setBackColor(ColorRef color)
{
    m_backColor = color;
}

void GridModel::setGrayColor(ColorRef color)
{
    m_grayColor = color;
}

template <typename Value> void GridModel::setBase(Value& base, const Value& value)
{
    if (base == value)
        return;
    base = value;
    m_measured = false;
    m_dirty = m_dirty || m_updateDepth > 0;
    if (m_updateDepth == 0)
        Q_EMIT framesChanged();
}

void GridModel::setBaseFace(const QString& face)
{
    setBase(m_baseFace, face);
}

void GridModel::setBaseSize(double pointSize)
{
    setBase(m_baseSize, pointSize);
}

CellFont GridModel::fontOf(const Cell& cell) const
{
    CellFont font = cell.font;
    if (font.face.isEmpty())
        font.face = m_baseFace;
    if (font.pointSize <= 0)
        font.pointSize = m_baseSize;
    return font;
}

void GridModel::setShown(bool shown)
{
    if (m_shown == shown)
        return;
    m_shown = shown;
    Q_EMIT shownChanged(shown);
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    const Cell& shown = cell(index.row() + 1, index.column() + 1);
    switch (role) {
    case Qt::DisplayRole:
        return shown.shownText();
    case Qt::EditRole:
        return shown.text;
    case Qt::ToolTipRole:
        return shown.toolTip.isEmpty() ? QVariant() : visibleLines(shown.toolTip);
    case Qt::TextAlignmentRole:
        return static_cast<int>(alignmentOf(shown.align));
    case Qt::AccessibleTextRole:
        return m_spoken(index.row() + 1, index.column() + 1).name;
    case Qt::AccessibleDescriptionRole:
        return m_spoken(index.row() + 1, index.column() + 1).description;
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const auto named = orientation == Qt::Horizontal ? m_colHeaders.constFind(section + 1) : m_colHeaders.cend();
    if (named != m_colHeaders.cend() && role == Qt::TextAlignmentRole)
        return static_cast<int>(alignmentOf(named->align));
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    if (named != m_colHeaders.cend())
        return visibleText(named->text);
    QString letters;
    for (int rest = section + 1; rest > 0; rest = (rest - 1) / 26)
        letters.prepend(QChar(u'A' + (rest - 1) % 26));
    return letters;
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const
{
    const Cell& shown = cell(index.row() + 1, index.column() + 1);
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | (shown.acceptsEntry() ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

} // namespace platform
