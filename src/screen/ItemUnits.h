#pragma once

#include "GridModel.h"

#include <QString>

#include <optional>

class ItemData;
struct ModelData;

// In which unit the values of items are, as a person reads it: the label beside the cell, or for temperatures the unit
// that is set, with a label such as "/min" behind it. A voltage or current input has no unit. Takes the settings once,
// when it is made; serves one refresh.
class ItemUnits
{
public:
    explicit ItemUnits(const ModelData& model);

    // In the language in use; empty when the definition gives none.
    QString unitOf(const ItemData& item) const;
    QString shown(const ItemData& item, const QString& value) const; // with its unit behind it
    // The cell beside a number where its unit is shown: one without a label, or with half a unit.
    std::optional<platform::CellPlace> shownPlace(const ItemData& item) const;

private:
    QString labelBeside(const ItemData& item) const;
    bool isTemperature(const ItemData& item) const;

    const ModelData& m_model;
    QString m_temperatureUnit;
};
