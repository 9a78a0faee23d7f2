#include "GridRefresh.h"

#include "LockRules.h"
#include "Numbers.h"
#include "clsCfg.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr platform::ColorRef kGray = 0x808080;
const QString kUnitTag = QStringLiteral("SWQCF");
const QString kUnknownTip = QStringLiteral("Not read from the controller");

// Choices whose names are words: shown in the user's language, in a column that grows with them.
bool isNamedChoice(const QString& tag)
{
    static const QStringList tags{QStringLiteral("PQKAL1"), QStringLiteral("PQKAL2"), QStringLiteral("PQKAL3"),
                                  QStringLiteral("PQRNO"), QStringLiteral("FQDI")};
    return tags.contains(tag);
}

} // namespace

void GridRefresh::takeFromImages(const std::vector<clsBlock*>* blocks)
{
    // What is only the definition's default was not sent; items that others set take their values below.
    for (const auto& item : m_owner.items()) {
        if (item->RSection().isEmpty() && item->holdsDefault())
            item->setKnown(false);
    }
    std::vector<clsData*> items;
    if (blocks == nullptr) {
        for (const auto& item : m_owner.items())
            items.push_back(item.get());
    } else {
        for (const clsBlock* block : *blocks)
            items.insert(items.end(), block->Tags().begin(), block->Tags().end());
    }
    // Which input table an input range is looked up in depends on the unit: the unit comes first.
    std::stable_partition(items.begin(), items.end(), [](const clsData* item) { return item->Key() == kUnitTag; });
    for (clsData* item : items)
        take(*item);
}

void GridRefresh::take(clsData& item)
{
    clsKXAdr* image = m_owner.ColAdr().find(item.RSection());
    if (image == nullptr)
        return;
    const bool sent = image->isFilled() && isSent(item, *image);
    item.setKnown(sent);
    item.Edit = sent ? EditState::kRead : EditState::kUntouched;
    if (!sent)
        return;
    if (item.DataLen() == 1)
        takeByte(item, *image);
    else if (item.DataLen() == 2)
        takeInteger(item, *image);
    else if (item.DataLen() >= 4)
        takeLong(item, *image);
    if (item.Key() == kUnitTag)
        m_owner.setUnitSwitch(m_owner.library().toLong(item.Data(), 0));
}

// Whether the reply holds a value of this item: length 3 has no meaning, a text may be longer than the image, and a
// register has no single bits.
bool GridRefresh::isSent(const clsData& item, const clsKXAdr& image) const
{
    const bool isText = item.DataLen() >= 4 && item.MType() != ItemType::Data;
    if (item.DataLen() < 1 || item.DataLen() == 3)
        return false;
    if (image.m_bModbus)
        return item.DataLen() <= 2 && !(item.DataLen() == 1 && item.MType() == ItemType::Bit);
    return image.holds(item.Address(), isText ? 1 : std::min(item.DataLen(), 4));
}

void GridRefresh::takeByte(clsData& item, clsKXAdr& image)
{
    if (item.MType() != ItemType::Bit) {
        item.setData(QString::number(image.getByte(item.Address())));
        return;
    }
    item.setData(QString::number(image.getBit(item.Address(), item.BitMask(), 0)));
}

void GridRefresh::takeInteger(clsData& item, clsKXAdr& image)
{
    if (isOffLine())
        item.setData(item.DefData());
    else
        item.setData(QString::number(image.getInteger(item.Address(), 0)));
}

void GridRefresh::takeLong(clsData& item, clsKXAdr& image)
{
    if (item.MType() == ItemType::Data) {
        const float value = image.getSingle(item.Address(), 0);
        // Four bytes that are no number have no text that the controller could have meant.
        item.setData(std::isfinite(value) ? platform::singleText(value) : QString());
        item.setKnown(std::isfinite(value));
        return;
    }
    const int length = std::min(item.DataLen(), image.imageSize());
    item.setData(isOffLine() ? m_owner.modelString() : image.getString(item.Address(), length, QString()));
}

bool GridRefresh::isOffLine() const
{
    const clsCfg* settings = m_owner.library().context().settings;
    return settings != nullptr && settings->m_bComm;
}

void GridRefresh::showAll()
{
    platform::GridModel* grid = m_owner.spread();
    if (grid == nullptr)
        return;
    grid->beginUpdate();
    const LockRules rules(m_owner);
    grid->setGrayColor(kGray);
    for (const auto& item : m_owner.items()) {
        if (item->Visible())
            show(*item, rules.lockOf(*item));
    }
    grid->endUpdate();
}

void GridRefresh::show(const clsData& item, std::optional<bool> locked)
{
    platform::GridModel* grid = m_owner.spread();
    if (grid == nullptr)
        return;
    platform::Cell cell = grid->cell(item.Row(), item.Col());
    cell.font.bold = item.SprFontBold();
    cell.foreColor = item.SprForeColor();
    cell.text = item.isKnown() ? textOf(item) : QString();
    cell.toolTip = item.isKnown() ? QString() : m_owner.library().tranStr(kUnknownTip);
    cell.locked = locked.value_or(cell.locked);
    if (item.MType() == ItemType::Bit)
        cell.value = m_owner.library().toLong(item.Data(), 0);
    if (cell.locked && cell.type == platform::CellType::Button)
        cell.foreColor = kGray;
    grid->setCell(item.Row(), item.Col(), cell);
    if (isNamedChoice(item.Key()))
        widen(item);
}

QString GridRefresh::textOf(const clsData& item) const
{
    const bool isTranslated = item.MType() == ItemType::Bit || isNamedChoice(item.Key());
    return isTranslated ? m_owner.library().tranStr(item.VData()) : item.VData();
}

void GridRefresh::widen(const clsData& item)
{
    const clsCfg* settings = m_owner.library().context().settings;
    if (settings != nullptr && settings->m_bAdjustDesign)
        return;
    platform::GridModel* grid = m_owner.spread();
    const double needed = grid->maxTextColWidth(item.Col());
    if (needed > grid->colWidth(item.Col()))
        grid->setColWidth(item.Col(), needed);
}
