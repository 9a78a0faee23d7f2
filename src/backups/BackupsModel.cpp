#include "BackupsModel.h"

#include "VisibleText.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const char*, BackupsModel::kColumns> kBackupCaptions{"BackupTime", "Model", "Cause",
                                                                          "Differences"};

} // namespace

BackupsModel::BackupsModel(TranslateText tran, QObject* parent) : QAbstractTableModel(parent), m_tran(std::move(tran))
{}

void BackupsModel::setEntries(std::vector<BackupEntry> entries)
{
    beginResetModel();
    m_rows.clear();
    m_rows.reserve(entries.size());
    for (BackupEntry& entry : entries)
        m_rows.push_back({std::move(entry), std::nullopt});
    endResetModel();
}

void BackupsModel::setDifferences(int row, std::optional<int> differences)
{
    std::optional<int>& shown = m_rows[static_cast<size_t>(row)].differences;
    if (shown == differences)
        return;
    shown = differences;
    Q_EMIT dataChanged(index(row, kDifferences), index(row, kDifferences));
}

int BackupsModel::rowOf(const QString& file) const
{
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [&file](const Row& row) { return row.entry.file == file; });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void BackupsModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
}

int BackupsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int BackupsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant BackupsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return text(m_rows[static_cast<size_t>(index.row())], index.column());
    case Qt::ToolTipRole: // a cause may be wider than its column
        return index.column() == kCause ? text(m_rows[static_cast<size_t>(index.row())], kCause) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == kDifferences ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case kSortRole:
        return sortKey(index.row(), index.column());
    default:
        return {};
    }
}

QVariant BackupsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumns)
        return {};
    if (role == Qt::TextAlignmentRole && section == kDifferences)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? caption(section) : QVariant();
}

QString BackupsModel::text(const Row& row, int column)
{
    switch (column) {
    case kTime:
        return row.entry.timeText();
    case kModel:
        return platform::visibleText(row.entry.model);
    case kCause:
        return platform::visibleText(row.entry.cause);
    default:
        return row.differences ? QString::number(*row.differences) : QString();
    }
}

QVariant BackupsModel::sortKey(int row, int column) const
{
    if (column == kTime)
        return rowCount() - row;
    const Row& sorted = m_rows[static_cast<size_t>(row)];
    return column == kDifferences ? QVariant(sorted.differences.value_or(-1)) : QVariant(text(sorted, column));
}

QString BackupsModel::caption(int column) const
{
    return platform::visibleText(m_tran(QString::fromLatin1(kBackupCaptions[static_cast<size_t>(column)])));
}

QString BackupsModel::copyText(int row) const
{
    QStringList cells;
    for (int column = 0; column < kColumns; ++column)
        cells << text(m_rows[static_cast<size_t>(row)], column);
    return cells.join(u'\t');
}

QString BackupsModel::copyCaptions() const
{
    QStringList cells;
    for (int column = 0; column < kColumns; ++column)
        cells << caption(column);
    return cells.join(u'\t');
}
