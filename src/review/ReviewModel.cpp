#include "ReviewModel.h"

#include "Numbers.h"
#include "VisibleText.h"

namespace {

// Keys of the language file, and the states in the order of their enumeration.
constexpr const char* kCaptions[ReviewModel::kColumns] = {"ReviewName",  "ReviewBlock", "ReviewHeld",  "ReviewValue",
                                                          "ReviewState", "ReviewCause", "ReviewClass", "ReviewTag"};
constexpr const char* kStates[] = {"changed", "cannot be written", "conflict", "not sent", "not accepted",
                                   "failed",  "accepted"};

} // namespace

ReviewModel::ReviewModel(Review& review, TranslateText tran, QObject* parent)
    : QAbstractTableModel(parent), m_review(review), m_tran(std::move(tran))
{}

void ReviewModel::reload()
{
    beginResetModel();
    m_rows = m_review.rows();
    endResetModel();
}

void ReviewModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

int ReviewModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ReviewModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

Qt::ItemFlags ReviewModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags plain = QAbstractTableModel::flags(index);
    const bool hasBox = index.column() == kName && row(index.row()).state != ReviewState::Accepted;
    return hasBox ? plain | Qt::ItemIsUserCheckable : plain;
}

QVariant ReviewModel::data(const QModelIndex& index, int role) const
{
    const ReviewRow& at = row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return platform::visibleText(text(at, index.column()));
    case Qt::CheckStateRole:
        if (index.column() == kName && at.state != ReviewState::Accepted)
            return at.ticked ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignVCenter |
                                (index.column() == kHeld || index.column() == kValue ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ToolTipRole:
        return platform::visibleText(at.ticked || at.change.kind == ParameterClass::Setting
                                         ? stateText(at)
                                         : m_tran(whyNotTicked(at.change.kind)));
    case kStateRole:
        return static_cast<int>(at.state);
    case kSortRole:
        if (const auto number = platform::parseDouble(text(at, index.column())))
            return *number;
        return text(at, index.column());
    default:
        return {};
    }
}

bool ReviewModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != kName)
        return false;
    ReviewRow& changed = m_rows[static_cast<size_t>(index.row())];
    changed.ticked = value.toInt() == Qt::Checked;
    m_review.setTicked(changed.change.tag, changed.ticked);
    Q_EMIT dataChanged(index, index);
    Q_EMIT ticked();
    return true;
}

QVariant ReviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return platform::visibleText(m_tran(QLatin1String(kCaptions[section])));
}

QString ReviewModel::text(const ReviewRow& row, int column) const
{
    switch (column) {
    case kName:
        return m_tran(row.change.name);
    case kBlock:
        return row.change.block.isEmpty() ? QString() : m_tran(row.change.block);
    case kHeld:
        return shown(row, row.change.heldShown);
    case kValue:
        return shown(row, row.change.valueShown);
    case kState:
        return stateText(row);
    case kCause:
        return causeText(row.change.cause, m_tran(row.change.causeName), m_tran);
    case kClass:
        return m_tran(parameterClassName(row.change.kind));
    default:
        return row.change.tag;
    }
}

QString ReviewModel::shown(const ReviewRow& row, const QString& value) const
{
    return row.change.hasWords && !value.isEmpty() ? m_tran(value) : value;
}

QString ReviewModel::stateText(const ReviewRow& row) const
{
    const QString state = m_tran(QLatin1String(kStates[static_cast<int>(row.state)]));
    if (row.state == ReviewState::Conflict)
        return m_tran(QStringLiteral("%1: the controller held %2 before")).arg(state, shown(row, row.seenShown));
    if (row.state == ReviewState::NotAccepted)
        return m_tran(QStringLiteral("%1: the controller keeps %2")).arg(state, shown(row, row.change.heldShown));
    if (row.state == ReviewState::Refused && row.reason.isEmpty())
        return QStringLiteral("%1: %2").arg(state, m_tran(QStringLiteral("outside its limits or no choice")));
    if (row.state == ReviewState::Changed && !row.ticked && row.change.kind != ParameterClass::Setting)
        return m_tran(whyNotTicked(row.change.kind));
    return row.reason.isEmpty() ? state : QStringLiteral("%1: %2").arg(state, row.reason);
}

QString ReviewModel::whyNotTicked(ParameterClass kind)
{
    switch (kind) {
    case ParameterClass::Calibration:
        return QStringLiteral("tick it by hand: it belongs to this one instrument");
    case ParameterClass::Line:
        return QStringLiteral("tick it by hand: the controller may not answer on this line afterwards");
    case ParameterClass::Command:
        return QStringLiteral("tick it by hand: it starts or stops something");
    default:
        return {};
    }
}

QString ReviewModel::copyText(int row) const
{
    const ReviewRow& at = this->row(row);
    QStringList cells{at.ticked ? QStringLiteral("x") : QString()};
    for (int column = 0; column < kColumns; ++column)
        cells << text(at, column).simplified();
    return cells.join(u'\t');
}

QString ReviewModel::copyCaptions() const
{
    QStringList cells{m_tran(QStringLiteral("ReviewTicked"))};
    for (const char* caption : kCaptions)
        cells << m_tran(QLatin1String(caption));
    return cells.join(u'\t');
}

ReviewFilter::ReviewFilter(QObject* parent) : QSortFilterProxyModel(parent) {}

void ReviewFilter::setShow(Show show)
{
    m_show = show;
    invalidateFilter();
}

void ReviewFilter::setSearch(const QString& text)
{
    m_search = text.trimmed();
    invalidateFilter();
}

bool ReviewFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const auto cell = [&](int column) { return sourceModel()->index(row, column, parent); };
    const auto state = static_cast<ReviewState>(cell(0).data(ReviewModel::kStateRole).toInt());
    const bool isWanted =
        m_show == Show::All || (m_show == Show::Conflicts && state == ReviewState::Conflict) ||
        (m_show == Show::Failed && (state == ReviewState::Failed || state == ReviewState::NotAccepted)) ||
        (m_show == Show::Accepted && state == ReviewState::Accepted);
    if (!isWanted || m_search.isEmpty())
        return isWanted;
    for (const int column : {ReviewModel::kName, ReviewModel::kBlock, ReviewModel::kTag}) {
        if (cell(column).data().toString().contains(m_search, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

// Numbers by their size, before texts.
bool ReviewFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QVariant a = left.data(ReviewModel::kSortRole);
    const QVariant b = right.data(ReviewModel::kSortRole);
    const bool isNumberA = a.userType() == QMetaType::Double;
    const bool isNumberB = b.userType() == QMetaType::Double;
    if (isNumberA && isNumberB)
        return a.toDouble() < b.toDouble();
    return isNumberA != isNumberB ? isNumberA : a.toString().localeAwareCompare(b.toString()) < 0;
}
