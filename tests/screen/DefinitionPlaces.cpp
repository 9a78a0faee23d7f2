#include "DefinitionCheck.h"

#include <algorithm>

// The part of DefinitionCheck that looks at places: cells of the grid, bytes of the controller's memory.

namespace {

constexpr int kMaxReadBytes = 120; // that one reply of the controller can carry

QString section(const char* prefix, int n)
{
    return QString::fromLatin1(prefix) + QString::number(n);
}

} // namespace

std::vector<DefinitionCheck::Label> DefinitionCheck::builtLabels() const
{
    std::vector<Label> labels;
    for (int n = 1; n <= m_kx.settings().stringCount; ++n) {
        const QString name = section("Strings", n);
        if (!isBuilt(name))
            continue;
        const QStringList cell = key(name, QStringLiteral("CellData")).split(u',');
        labels.push_back({name, cell.value(0).toInt(), cell.value(1).toInt(), key(name, QStringLiteral("Caption"))});
    }
    return labels;
}

// Blocks lie inside the grid and beside each other; every row of a block below its title is an item of the block with
// its label, and every label belongs to a block.
void DefinitionCheck::checkGrid()
{
    const QRect grid(QPoint(1, 1), QPoint(m_kx.settings().maxCol, m_kx.settings().maxRow));
    QHash<int, QRect> areas;
    for (const clsBlock* block : m_kx.BlockCol()) {
        const QString name = section("BlockInfo", block->m_lNo);
        const QStringList cell = key(name, QStringLiteral("CellData")).split(u',');
        const QRect area(QPoint(cell.value(1).toInt(), cell.value(0).toInt()),
                         QPoint(cell.value(3).toInt(), cell.value(2).toInt()));
        if (!area.isValid() || !grid.contains(area))
            find(name, QStringLiteral("outside the grid"));
        for (auto other = areas.cbegin(); other != areas.cend(); ++other) {
            if (other->intersects(area))
                find(name, QStringLiteral("overlaps block %1").arg(other.key()));
        }
        areas.insert(block->m_lNo, area);
        for (int row = area.top() + 1; row <= area.bottom(); ++row) {
            const clsData* item = m_kx.getDataByRC(row, area.left() + 1);
            if (item == nullptr || item->BlockNo() != block->m_lNo)
                find(name, QStringLiteral("no item of its own in row %1").arg(row));
        }
    }
    for (const auto& item : m_kx.items()) {
        if (item->Visible() && !areas.value(item->BlockNo()).contains(item->Col(), item->Row()))
            find(item->Key(), QStringLiteral("outside its block"));
    }
    checkLabels(areas);
}

void DefinitionCheck::checkLabels(const QHash<int, QRect>& areas)
{
    QHash<QString, QString> cells; // by place: the caption
    for (const Label& label : builtLabels()) {
        const QString place = QStringLiteral("%1-%2").arg(label.row).arg(label.col);
        if (cells.contains(place) || m_kx.getDataByRC(label.row, label.col) != nullptr)
            find(label.section, QStringLiteral("cell %1 is taken").arg(place));
        cells.insert(place, label.caption);
        bool inBlock = label.row == 1; // the spacers of the gaps
        for (const QRect& area : areas)
            inBlock = inBlock || area.contains(label.col, label.row);
        if (!inBlock)
            find(label.section, QStringLiteral("label without its block"));
    }
    for (const auto& item : m_kx.items()) {
        if (item->Visible() &&
            cells.value(QStringLiteral("%1-%2").arg(item->Row()).arg(item->Col() - 1)) != item->DataName())
            find(item->Key(), QStringLiteral("not labelled with its name"));
    }
}

void DefinitionCheck::checkMemory()
{
    for (int i = 0; i < m_kx.ColAdr().count(); ++i) {
        const clsKXAdr& image = m_kx.ColAdr().at(i);
        if (image.m_bModbus)
            checkRegister(image);
        else
            checkImage(image);
    }
    for (const auto& item : m_kx.items()) {
        if (m_kx.ColAdr().find(item->RSection()) == nullptr || item->WSection() != item->RSection())
            find(item->Key(), QStringLiteral("no image \"%1\" to write").arg(item->WSection()));
    }
}

void DefinitionCheck::checkRegister(const clsKXAdr& image)
{
    int members = 0;
    for (const auto& item : m_kx.items()) {
        if (item->RSection() != image.Section())
            continue;
        ++members;
        if (item->DataLen() != 2)
            find(item->Key(), QStringLiteral("is not a register"));
    }
    if (members != 1 || image.MsgMax() != 1 || image.Cnt(1) != 1)
        find(image.Section(), QStringLiteral("is not one register for one item"));
}

// The items of an image fill it without a gap and share no bits.
void DefinitionCheck::checkImage(const clsKXAdr& image)
{
    const int start = image.StartAddress().toInt(nullptr, 16);
    const int size = static_cast<int>(image.getOrgData().size()) - 1;
    if (size < 1 || size > kMaxReadBytes)
        find(image.Section(), QStringLiteral("%1 bytes in one read").arg(size));
    for (int i = 1; i <= image.WMsgMax(); ++i) {
        const bool isWhole = image.WAdr(i) == image.Adr(1) && image.WCnt(i) == size;
        if (image.WCmd(i) == u"Direct" && !isWhole)
            find(image.Section(), QStringLiteral("writes other memory than it reads"));
    }
    std::vector<int> used(static_cast<size_t>(std::max(size, 0)), 0);
    for (const auto& item : m_kx.items()) {
        if (item->RSection() != image.Section())
            continue;
        const int offset = item->Address().toInt(nullptr, 16) - start;
        if (offset < 0 || item->DataLen() < 1 || offset + item->DataLen() > size) {
            find(item->Key(), QStringLiteral("outside the memory of its section"));
            continue;
        }
        const int bits = item->MType() == ItemType::Bit ? item->BitMask() : 0xFF;
        for (int i = offset; i < offset + item->DataLen(); ++i) {
            int& byte = used[static_cast<size_t>(i)];
            if (bits == 0 || (byte & bits) != 0)
                find(item->Key(), QStringLiteral("shares memory with another item"));
            byte |= bits;
        }
    }
    if (std::find(used.begin(), used.end(), 0) != used.end())
        find(image.Section(), QStringLiteral("has bytes of no item"));
}
