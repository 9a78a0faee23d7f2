#include "GridRefresh.h"

#include "EntryOrder.h"
#include "HeldValue.h"
#include "ItemDisplay.h"
#include "ItemUnits.h"
#include "ItemValue.h"
#include "LockRules.h"
#include "ModelData.h"
#include "Tags.h"
#include "WrittenItems.h"
#include "clsLibrary.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace {

constexpr platform::ColorRef kGray = 0x808080;
constexpr platform::ColorRef kRefusedColor = 0x0000FF; // red, in the order blue, green, red
const QString kRefusedTip = QStringLiteral("Outside its limits or no choice: it is not written until it is corrected");
const QString kHeldTip = QStringLiteral("The controller holds %1");
const QString kFailedTip = QStringLiteral("The last write of it failed");
const QString kNotAcceptedTip = QStringLiteral("The controller did not accept it");
const QString kAtOnceTip = QStringLiteral("A choice is written to the controller at once");
const QString kSwitchTip = QStringLiteral("Press to change to: %1");
const QString kUnknownTip = QStringLiteral("Not read from the controller");

} // namespace

void GridRefresh::readFromImages(const std::vector<clsBlock*>* blocks)
{
    std::vector<clsData*> items;
    std::vector<int> marks;
    marks.reserve(m_model.items.size());
    for (const auto& item : m_model.items)
        marks.push_back(item->Edit);
    if (blocks == nullptr) {
        for (const auto& item : m_model.items)
            items.push_back(item.get());
    } else {
        for (const clsBlock* block : *blocks)
            items.insert(items.end(), block->Tags().begin(), block->Tags().end());
    }
    // What a choice sets comes before the values that were read, which hold over it.
    for (const size_t place : entryOrder({items.begin(), items.end()}))
        read(*items[place]);
    for (size_t i = 0; i < marks.size(); ++i)
        dropMark(*m_model.items[i], blocks == nullptr, marks[i]);
}

// What a choice that was read sets besides is no edit, and no edit outlives a read of everything.
void GridRefresh::dropMark(clsData& item, bool isWhole, int before)
{
    if (item.Edit == EditState::kChanged && (isWhole || before != EditState::kChanged))
        item.Edit = EditState::kUntouched;
}

void GridRefresh::read(clsData& item)
{
    if (!isRead(m_model, item))
        return;
    const clsKXAdr& image = *m_model.images.find(item.RSection());
    const auto value = m_model.isOffLine() ? offLineValue(item, image) : heldValue(item, image);
    item.setKnown(value.has_value());
    item.Edit = value ? EditState::kRead : EditState::kUntouched;
    item.sendMark = SendMark::None;
    item.cause = {};
    if (!value)
        return;
    item.setData(*value);
    if (m_model.isOffLine())
        item.setHoldsDefault();
    followUnit(item, m_model.lookup);
}

// The only text of a controller is its model string, and off-line that is the one that was chosen.
std::optional<QString> GridRefresh::offLineValue(const clsData& item, const clsKXAdr& image) const
{
    if (!heldValue(item, image))
        return std::nullopt;
    const bool isText = item.DataLen() >= 4 && item.MType() != ItemType::Data;
    return isText ? m_model.lookup.modelString : item.DefData();
}

void GridRefresh::showAll()
{
    if (m_grid == nullptr)
        return;
    m_grid->beginUpdate();
    const LockRules rules(m_model.lookup);
    m_grid->setGrayColor(kGray);
    for (const auto& item : m_model.items) {
        if (item->Visible())
            show(*item, rules.lockOf(*item));
    }
    showUnits();
    m_grid->endUpdate();
}

void GridRefresh::show(const clsData& item, std::optional<bool> locked)
{
    if (m_grid == nullptr)
        return;
    platform::Cell cell = m_grid->cell(item.Row(), item.Col());
    cell.font.bold = item.SprFontBold();
    cell.foreColor = item.SprForeColor();
    cell.text = item.isKnown() ? textOf(item) : QString();
    cell.toolTip = item.isKnown() ? QString() : m_model.library().tranStr(kUnknownTip);
    if (item.isKnown() && item.Edit == EditState::kChanged) {
        QStringList tips{heldTip(item)};
        if (!item.isReadOnly() && !item.isAllowed()) {
            cell.foreColor = kRefusedColor;
            tips.prepend(m_model.library().tranStr(kRefusedTip));
        }
        tips.removeAll(QString());
        cell.toolTip = tips.join(u'\n');
    }
    if (cell.toolTip.isEmpty() && goesOutAtOnce(m_model, item))
        cell.toolTip = m_model.library().tranStr(kAtOnceTip);
    if (cell.toolTip.isEmpty() && cell.sign == platform::CellSign::Switch)
        cell.toolTip = m_model.library().tranStr(kSwitchTip).arg(otherState(item));
    cell.marked = item.sendMark != SendMark::None;
    if (cell.marked)
        cell.toolTip = (markTip(item) + u'\n' + cell.toolTip).trimmed();
    cell.locked = locked.value_or(cell.locked);
    if (item.MType() == ItemType::Bit)
        cell.value = m_model.library().toLong(item.Data(), 0);
    if (cell.locked && cell.type == platform::CellType::Button)
        cell.foreColor = kGray;
    m_grid->setCell(item.Row(), item.Col(), cell);
    if (isNamedChoice(item.Key()))
        widen(item.Col());
}

QString GridRefresh::markTip(const clsData& item) const
{
    return m_model.library().tranStr(item.sendMark == SendMark::Failed ? kFailedTip : kNotAcceptedTip);
}

// What a changed cell hides: the value that the controller held.
QString GridRefresh::heldTip(const clsData& item) const
{
    const auto held = isUnsent(m_model, item) ? heldValue(m_model, item) : std::nullopt;
    if (!held)
        return {};
    return m_model.library().tranStr(kHeldTip).arg(
        translatedValue(item, m_model.lookup, *held, m_model.library().translation()));
}

QString GridRefresh::otherState(const clsData& item) const
{
    const bool isOn = isSameNumber(item.Data(), QString::number(item.BitOn()));
    return m_model.library().tranStr(isOn ? item.BitOffCap() : item.BitOnCap());
}

QString GridRefresh::textOf(const clsData& item) const
{
    return hasWords(item) ? m_model.library().tranStr(item.VData()) : item.VData();
}

void GridRefresh::showUnits()
{
    if (m_grid == nullptr)
        return;
    const ItemUnits units(m_model);
    QSet<int> columns;
    for (const auto& item : m_model.items) {
        const auto place = units.shownPlace(*item);
        if (!place)
            continue;
        m_grid->setText(place->row, place->col, units.unitOf(*item));
        columns.insert(place->col);
    }
    for (const int col : std::as_const(columns))
        widen(col);
}

void GridRefresh::widen(int col)
{
    if (m_model.library().context().settings.get().m_bAdjustDesign)
        return;
    const double needed = m_grid->maxTextColWidth(col);
    if (needed > m_grid->colWidth(col))
        m_grid->setColWidth(col, needed);
}
