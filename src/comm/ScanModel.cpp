#include "ScanModel.h"

#include "VisibleText.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const char*, ScanModel::kColumns> kScanCaptions{"Port",  "Speed", "Format",        "Mode",
                                                                     "Slave", "Model", "Response (ms)", "Remark"};

} // namespace

namespace scantexts {

QString remark(ScanFind::Kind kind)
{
    switch (kind) {
    case ScanFind::Kind::Controller:
        break;
    case ScanFind::Kind::NoModel:
        return QStringLiteral("answers, but holds no model string");
    case ScanFind::Kind::Collision:
        return QStringLiteral("garbled answer: two controllers with this slave address?");
    case ScanFind::Kind::OtherSetting:
        return QStringLiteral("something answers at another setting");
    }
    return {};
}

QStringList cells(const ScanFind& find, const TranslateText& tran)
{
    const bool isSlave = find.kind != ScanFind::Kind::OtherSetting;
    const bool isSound = find.kind == ScanFind::Kind::Controller || find.kind == ScanFind::Kind::NoModel;
    const QString note = remark(find.kind);
    return {QStringLiteral("COM%1").arg(find.port),
            find.line.speed,
            find.line.chara,
            isSlave ? scanplan::modeText(find.line.mode) : QString(),
            isSlave ? QString::number(find.slave) : QString(),
            find.model,
            isSound ? QString::number(find.responseMs) : QString(),
            note.isEmpty() ? note : tran(note)};
}

} // namespace scantexts

ScanModel::ScanModel(TranslateText tran, QObject* parent) : QAbstractTableModel(parent), m_tran(std::move(tran)) {}

void ScanModel::append(const ScanFind& find)
{
    beginInsertRows({}, rowCount(), rowCount());
    m_finds.push_back(find);
    endInsertRows();
}

void ScanModel::retranslate()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    if (!m_finds.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

bool ScanModel::isConnectable(int row) const
{
    return row >= 0 && row < rowCount() && find(row).kind == ScanFind::Kind::Controller;
}

int ScanModel::firstController() const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (isConnectable(row))
            return row;
    }
    return -1;
}

int ScanModel::controllers() const
{
    return static_cast<int>(std::count_if(
        m_finds.begin(), m_finds.end(), [](const ScanFind& find) { return find.kind == ScanFind::Kind::Controller; }));
}

QStringList ScanModel::visibleCells(int row) const
{
    return platform::visibleTexts(scantexts::cells(find(row), m_tran));
}

QString ScanModel::copyText(int row) const
{
    return visibleCells(row).join(u'\t');
}

QString ScanModel::copyCaptions() const
{
    QStringList captions;
    for (const char* caption : kScanCaptions)
        captions << m_tran(QString::fromLatin1(caption));
    return captions.join(u'\t');
}

int ScanModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_finds.size());
}

int ScanModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant ScanModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || role != Qt::DisplayRole)
        return {};
    return visibleCells(index.row()).value(index.column());
}

QVariant ScanModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumns)
        return {};
    return platform::visibleText(m_tran(QString::fromLatin1(kScanCaptions[static_cast<size_t>(section)])));
}
