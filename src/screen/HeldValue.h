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

// The item was changed, and its value is not the one that the controller held: it would be lost with the grid.
bool isUnsent(const ModelData& model, const ItemData& item);

// The values that the controller held at the last read or good write, of all items that are read.
ParameterSet heldSet(const ModelData& model);
