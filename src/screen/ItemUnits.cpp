#include "ItemUnits.h"

#include "ItemDisplay.h"
#include "ModelData.h"
#include "Tags.h"
#include "TextTools.h"
#include "clsLibrary.h"

namespace {

// "/min", which says nothing without the unit before it.
bool isRate(const QString& label)
{
    return label.startsWith(u'/');
}

} // namespace

ItemUnits::ItemUnits(const ModelData& model) : m_model(model)
{
    const ItemData* unit = model.lookup.find(tags::kUnit);
    if (unit != nullptr && unit->isKnown() && !hasVoltageRange(model.lookup))
        m_temperatureUnit = translatedValue(*unit, model.lookup, unit->Data(), model.library().translation());
}

QString ItemUnits::unitOf(const ItemData& item) const
{
    const QString label = labelBeside(item);
    const bool isCompleted = label.isEmpty() || isRate(label);
    return isCompleted && isTemperature(item) ? m_temperatureUnit + label : label;
}

QString ItemUnits::shown(const ItemData& item, const QString& value) const
{
    return texttools::withUnit(value, unitOf(item));
}

// A label with a cell on its other side is the name of that one.
QString ItemUnits::labelBeside(const ItemData& item) const
{
    if (!item.Visible() || item.Col() >= m_model.settings.maxCol) // a definition may place it anywhere
        return {};
    const bool isNameOfNext = m_model.itemAt(item.Row(), item.Col() + 2) != nullptr;
    return isNameOfNext ? QString() : m_model.labels.value({item.Row(), item.Col() + 1});
}

// All that has as many decimal places as the set values is in their unit; of alarms the type says so.
bool ItemUnits::isTemperature(const ItemData& item) const
{
    if (item.MType() != ItemType::Data || item.showsStoredText())
        return false;
    const QString tag = item.Key();
    const bool isValue = tag.size() == tags::kAlarmValues.size() + 1 && tag.startsWith(tags::kAlarmValues);
    if (!isValue && !tags::isAlarmBand(tag))
        return item.decimalsReference() == tags::kPoint;
    const int alarm = tag.at(isValue ? 4 : 2).digitValue();
    const ItemData* type = m_model.lookup.find(tags::alarmType(alarm));
    const int row = type == nullptr ? 0 : m_model.library().toLong(type->Data(), 0);
    const DecimalTable& table = isValue ? m_model.lookup.eventDot : m_model.lookup.eventBandDot;
    return type != nullptr && table.at(row, 0) != table.at(row, 1);
}

std::optional<platform::CellPlace> ItemUnits::shownPlace(const ItemData& item) const
{
    if (item.Col() >= m_model.settings.maxCol)
        return std::nullopt;
    const int col = item.Col() + 1;
    const QString label = m_model.labels.value({item.Row(), col});
    const bool isFree = m_model.itemAt(item.Row(), col) == nullptr && m_model.blockAt(item.Row(), col) == nullptr &&
                        (label.isEmpty() || isRate(label));
    if (!item.Visible() || !isFree || item.MType() != ItemType::Data)
        return std::nullopt;
    return platform::CellPlace{item.Row(), col};
}
