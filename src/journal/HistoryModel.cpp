#include "HistoryModel.h"

#include "TextTools.h"
#include "VisibleText.h"

#include <array>
#include <optional>

namespace {

constexpr std::array<const char*, HistoryModel::kColumns> kHistoryCaptions{
    "HistoryTime", "Outcome", "Parameter", "Old value", "New value", "Tag", "Cause", "Device", "Model", "User"};

// What a write puts into the journal. Other words are shown as they are.
constexpr const char* kOutcomes[] = {"accepted",           "not accepted", "failed",      "not sent",
                                     "outside its limits", "no value",     "unchanged",   "complete",
                                     "cancelled",          "aborted",      "interrupted", "going on"};

std::optional<double> numberIn(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

bool isLessValue(const QString& left, const QString& right)
{
    const std::optional<double> number = numberIn(left);
    const std::optional<double> other = numberIn(right);
    if (number && other)
        return *number < *other;
    return number || other ? number.has_value() : left.compare(right, Qt::CaseInsensitive) < 0;
}

} // namespace

HistoryModel::HistoryModel(TranslateText tran, QObject* parent) : QAbstractTableModel(parent), m_tran(std::move(tran))
{
    translateWords();
}

void HistoryModel::translateWords()
{
    for (const char* word : kOutcomes)
        m_words.insert(QString::fromLatin1(word), m_tran(QString::fromLatin1(word)));
    m_deviceForm = m_tran(QStringLiteral("%1, slave %2"));
}

void HistoryModel::load(std::vector<JournalEntry> entries)
{
    beginResetModel();
    m_entries = std::move(entries);
    m_rows = historyRows(m_entries, HistoryOrder::NewestFirst);
    endResetModel();
}

void HistoryModel::retranslate()
{
    translateWords();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

bool HistoryModel::isLess(int left, int right, int column) const
{
    const HistoryRow& one = row(left);
    const HistoryRow& other = row(right);
    if (column == kTime)
        return one.entry < other.entry; // both are in m_entries
    if (column == kHeld || column == kValue)
        return isLessValue(plainText(one, column), plainText(other, column));
    return plainText(one, column).compare(plainText(other, column), Qt::CaseInsensitive) < 0;
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int HistoryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const bool isValue = index.column() == kHeld || index.column() == kValue;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // what the column is too narrow for
        return text(row(index.row()), index.column());
    case Qt::TextAlignmentRole:
        if (isValue && numberIn(plainText(row(index.row()), index.column())))
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    default:
        return {};
    }
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumns)
        return {};
    return platform::visibleText(m_tran(QString::fromLatin1(kHistoryCaptions[static_cast<size_t>(section)])));
}

QString HistoryModel::text(const HistoryRow& row, int column) const
{
    const QString plain = plainText(row, column);
    const bool isValue = column == kHeld || column == kValue;
    return platform::visibleText(isValue ? texttools::withUnit(plain, row.unit()) : plain);
}

QString HistoryModel::plainText(const HistoryRow& row, int column) const
{
    switch (column) {
    case kTime:
        return row.entry->begunAt.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss"));
    case kOutcome:
        return m_words.value(row.outcome(), row.outcome());
    case kName:
        return row.name();
    case kHeld:
        return row.held();
    case kValue:
        return row.value();
    case kTag:
        return row.tag();
    case kCause:
        return row.entry->cause;
    case kDevice:
        return deviceText(*row.entry);
    case kModel:
        return row.entry->model;
    case kUser:
        return row.entry->user;
    default:
        return {};
    }
}

// Empty for a write whose begin is lost.
QString HistoryModel::deviceText(const JournalEntry& entry) const
{
    return entry.device.isEmpty() ? QString() : m_deviceForm.arg(entry.device, QString::number(entry.slave));
}

QString HistoryModel::copyText(int number) const
{
    QStringList cells;
    for (int column = 0; column < kColumns; ++column)
        cells << text(row(number), column);
    return cells.join(u'\t');
}

QString HistoryModel::copyCaptions() const
{
    QStringList cells;
    for (int column = 0; column < kColumns; ++column)
        cells << headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    return cells.join(u'\t');
}
