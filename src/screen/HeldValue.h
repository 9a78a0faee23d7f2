#pragma once

#include <QString>
#include <optional>

class ItemData;
class clsKXAdr;
struct ModelData;
struct ParameterSet;

// What the original image holds for an item, as stored text. Nothing when the image was not read, when the reply does
// not hold this item, or when the bytes are no number.
std::optional<QString> heldValue(const ItemData& item, const clsKXAdr& image);

// The same for an item of a model, from the image that reads it. Off-line no controller holds anything.
std::optional<QString> heldValue(const ModelData& model, const ItemData& item);

// The item has a value that a write command carries and the controller did not hold. One that was not read counts when
// it was changed.
bool differsFromHeld(const ModelData& model, const ItemData& item);
// The same of an item that was changed and not sent since: the value would be lost with the grid.
bool isUnsent(const ModelData& model, const ItemData& item);

// The values that the controller held at the last read or good write, of all items that are read.
ParameterSet heldSet(const ModelData& model);
