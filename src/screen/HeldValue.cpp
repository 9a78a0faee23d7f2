#include "HeldValue.h"

#include "Comparison.h"
#include "ModelData.h"
#include "Numbers.h"
#include "ParameterSet.h"
#include "WrittenItems.h"

#include <algorithm>
#include <cmath>

namespace {

// Whether the reply holds a value of this item: length 3 has no meaning, a text begins with the image and may be
// longer, and a register has no single bits.
bool isSent(const ItemData& item, const clsKXAdr& image)
{
    const bool isText = item.DataLen() >= 4 && item.MType() != ItemType::Data;
    if (item.DataLen() < 1 || item.DataLen() == 3)
        return false;
    if (image.m_bModbus)
        return item.DataLen() <= 2 && !(item.DataLen() == 1 && item.MType() == ItemType::Bit);
    return isText ? image.imageSize() > 0 : image.holds(item.Address(), std::min(item.DataLen(), 4));
}

QString byteText(const ItemData& item, const clsKXAdr& image)
{
    return QString::number(item.MType() == ItemType::Bit ? image.getBit(item.Address(), item.BitMask(), 0)
                                                         : image.getByte(item.Address()));
}

std::optional<QString> longText(const ItemData& item, const clsKXAdr& image)
{
    if (item.MType() != ItemType::Data)
        return image.getString(item.Address(), std::min(item.DataLen(), image.imageSize()), QString());
    const float value = image.getSingle(item.Address(), 0);
    return std::isfinite(value) ? std::optional(platform::singleText(value)) : std::nullopt;
}

} // namespace

std::optional<QString> heldValue(const ItemData& item, const clsKXAdr& image)
{
    if (!image.isFilled() || !isSent(item, image))
        return std::nullopt;
    if (item.DataLen() == 1)
        return byteText(item, image);
    if (item.DataLen() == 2)
        return QString::number(image.getInteger(item.Address(), 0));
    return longText(item, image);
}

std::optional<QString> heldValue(const ModelData& model, const ItemData& item)
{
    const clsKXAdr* image = model.isOffLine() ? nullptr : model.images.find(item.RSection());
    return image == nullptr ? std::nullopt : heldValue(item, *image);
}

bool differsFromHeld(const ModelData& model, const ItemData& item)
{
    if (!item.isKnown() || !isWritten(model, item))
        return false;
    const auto held = heldValue(model, item);
    return held ? !isSameValue(*held, item.Data()) : item.Edit == EditState::kChanged;
}

bool isUnsent(const ModelData& model, const ItemData& item)
{
    return item.Edit == EditState::kChanged && differsFromHeld(model, item);
}

ParameterSet heldSet(const ModelData& model)
{
    ParameterSet set{model.lookup.modelString, {}};
    for (const auto& item : model.items) {
        if (const auto value = heldValue(model, *item))
            set.values.append({item->Key(), *value});
    }
    return set;
}
