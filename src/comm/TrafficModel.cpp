#include "TrafficModel.h"

#include "FrameTexts.h"
#include "VisibleText.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::array<const char*, TrafficModel::kColumns> kCaptions{
    "TrafficTime", "TrafficDirection", "Slave", "Function", "Address", "TrafficParameters", "Count", "Data", "Check",
    "Remark"};
constexpr qsizetype kDateLength = 11; // "2007/03/05 "
constexpr qsizetype kMillisecondMark = 19;
const QString kDamaged = QStringLiteral("a record of the log is damaged");

// Milliseconds behind a point.
QString readableStamp(QString stamp)
{
    if (stamp.size() > kMillisecondMark)
        stamp[kMillisecondMark] = u'.';
    return stamp;
}

} // namespace

TrafficModel::TrafficModel(TranslateText tran, QObject* parent) : QAbstractTableModel(parent), m_tran(std::move(tran))
{}

void TrafficModel::append(const std::vector<LogReader::Entry>& entries)
{
    std::vector<Row> rows;
    rows.reserve(entries.size());
    for (const LogReader::Entry& entry : entries) {
        if (!entry.stamp.isEmpty()) {
            addFrame(entry, rows);
            continue;
        }
        Row row{QString(), kDamaged, FrameFields(), QString()};
        row.fields.fault = FrameFields::Fault::DamagedLine;
        rows.push_back(std::move(row));
    }
    appendRows(std::move(rows));
}

void TrafficModel::addFrame(const LogReader::Entry& entry, std::vector<Row>& rows)
{
    const QString stamp = readableStamp(entry.stamp);
    const FrameFields fields = m_decoder.decode(entry.text);
    if (fields.direction == FrameFields::Direction::Rejected) {
        reject(fields, rows);
        return;
    }
    const QString parameters = m_names(stamp, fields);
    if (m_decoder.repetition())
        rows.push_back({QString(), QString(), *m_decoder.repetition(), parameters});
    rows.push_back({stamp, QString(), fields, parameters});
}

// The log has the reply twice; its row stays one. It is gone only when somebody has cleared the table between the two.
void TrafficModel::reject(const FrameFields& fields, std::vector<Row>& rows)
{
    if (!rows.empty()) {
        rows.back().fields = fields;
        return;
    }
    if (m_rows.empty())
        return;
    FrameFields& shown = m_rows.back().fields;
    m_errors += shown.isError() ? 0 : 1;
    shown = fields;
    Q_EMIT dataChanged(index(rowCount() - 1, 0), index(rowCount() - 1, kColumns - 1));
}

void TrafficModel::appendNote(const QString& english, bool isError)
{
    m_decoder.restart();
    Row row{QString(), english, FrameFields(), QString()};
    row.fields.fault = isError ? FrameFields::Fault::DamagedLine : FrameFields::Fault::None;
    appendRows({row});
}

void TrafficModel::appendRows(std::vector<Row> rows)
{
    if (rows.size() > kMostRows)
        rows.erase(rows.begin(), rows.end() - kMostRows);
    if (rows.empty())
        return;
    const int added = static_cast<int>(rows.size());
    dropOldest(rowCount() + added - kMostRows);
    beginInsertRows({}, rowCount(), rowCount() + added - 1);
    for (Row& row : rows) {
        m_errors += row.fields.isError() ? 1 : 0;
        m_rows.push_back(std::move(row));
    }
    endInsertRows();
}

void TrafficModel::dropOldest(int count)
{
    if (count <= 0)
        return;
    beginRemoveRows({}, 0, count - 1);
    const auto end = m_rows.begin() + count;
    m_errors -= static_cast<int>(std::count_if(m_rows.begin(), end, [](const Row& r) { return r.fields.isError(); }));
    m_rows.erase(m_rows.begin(), end);
    endRemoveRows();
}

void TrafficModel::clear()
{
    beginResetModel();
    m_rows.clear();
    m_errors = 0;
    endResetModel();
}

void TrafficModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

int TrafficModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TrafficModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant TrafficModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row& row = m_rows[static_cast<size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column());
    case Qt::AccessibleTextRole: // the mark of an error is a picture
        return index.column() == kDirection && row.fields.isError()
                   ? m_tran(QStringLiteral("Error")) + QStringLiteral(", ") + text(row, kDirection)
                   : text(row, index.column());
    case kIsErrorRole:
        return row.fields.isError();
    case kDetailsRole:
        return platform::visibleLines(
            row.note.isEmpty() ? frametexts::details(row.fields, row.stamp, row.parameters, m_tran) : m_tran(row.note));
    default:
        return {};
    }
}

QVariant TrafficModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumns)
        return {};
    return platform::visibleText(m_tran(QString::fromLatin1(kCaptions[static_cast<size_t>(section)])));
}

QString TrafficModel::text(const Row& row, int column) const
{
    return platform::visibleText(plainText(row, column));
}

QString TrafficModel::plainText(const Row& row, int column) const
{
    const FrameFields& fields = row.fields;
    switch (column) {
    case kTime:
        return row.stamp.mid(kDateLength);
    case kDirection:
        return frametexts::direction(fields, m_tran);
    case kSlave:
        return fields.slave ? QString::number(*fields.slave) : QString();
    case kFunction:
        return frametexts::function(fields, m_tran);
    case kAddress:
        return frametexts::address(fields);
    case kParameters:
        return row.parameters;
    case kCount:
        return fields.count ? QString::number(*fields.count) : QString();
    case kData:
        return frametexts::hexBytes(fields.data);
    case kCheck:
        return frametexts::check(fields, m_tran);
    case kRemark:
        return row.note.isEmpty() ? frametexts::remark(fields, m_tran) : m_tran(row.note);
    default:
        return {};
    }
}

QString TrafficModel::copyText(int row) const
{
    if (row < 0 || row >= rowCount())
        return {};
    const Row& copied = m_rows[static_cast<size_t>(row)];
    QStringList cells{platform::visibleText(copied.stamp)};
    for (int column = kDirection; column < kColumns; ++column)
        cells << text(copied, column);
    cells << frametexts::hexBytes(copied.fields.wire);
    return cells.join(u'\t');
}

QString TrafficModel::copyCaptions() const
{
    QStringList cells;
    for (const char* caption : kCaptions)
        cells << m_tran(QString::fromLatin1(caption));
    cells << m_tran(QStringLiteral("Frame"));
    return cells.join(u'\t');
}
