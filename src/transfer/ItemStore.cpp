#include "ItemStore.h"

#include "Numbers.h"
#include "clsData.h"
#include "clsKXAdr.h"

namespace {

constexpr int kMaxByte = 255;

bool storeByte(const clsData& item, clsKXAdr& image)
{
    const auto value = platform::parseInt32(item.Data());
    if (!value || *value < 0 || *value > kMaxByte)
        return false;
    image.setByte(item.Address(), static_cast<quint8>(*value));
    return true;
}

bool storeInteger(const clsData& item, clsKXAdr& image)
{
    const auto value = platform::parseInt16(item.Data());
    if (value)
        image.setInteger(item.Address(), *value);
    return value.has_value();
}

bool storeSingle(const clsData& item, clsKXAdr& image)
{
    // A text shows fewer digits than the bytes hold: a value that is still the one that was read keeps its bytes.
    const float original = image.getSingle(item.Address(), 0);
    if (image.isFilled() && item.Data() == platform::singleText(original)) {
        image.setSingle(item.Address(), original);
        return true;
    }
    const auto value = platform::parseSingle(item.Data());
    if (value)
        image.setSingle(item.Address(), *value);
    return value.has_value();
}

bool storeBit(const clsData& item, clsKXAdr& image)
{
    const auto value = platform::parseInt32(item.Data());
    if (value)
        image.setBit(item.Address(), item.BitMask(), *value != 0);
    return value.has_value();
}

} // namespace

QString heldText(const clsData& item, const QString& storedText)
{
    const auto value = platform::parseSingle(storedText);
    const bool isSingle = item.MType() == ItemType::Data && item.DataLen() == 4;
    return isSingle && value ? platform::singleText(*value) : storedText;
}

bool storeInImage(const clsData& item, clsKXAdr& image)
{
    if (item.isReadOnly())
        return false;
    const int length = item.DataLen();
    switch (item.MType()) {
    case ItemType::Bit:
        return storeBit(item, image);
    case ItemType::Data:
        return length == 1   ? storeByte(item, image)
               : length == 2 ? storeInteger(item, image)
               : length == 4 ? storeSingle(item, image)
                             : false;
    case ItemType::Combo:
    case ItemType::Multi:
    case ItemType::Input:
        return length == 1 ? storeByte(item, image) : length == 2 ? storeInteger(item, image) : false;
    case ItemType::String:
        break;
    }
    return false;
}

bool fitsImage(const clsData& item, const clsKXAdr& image)
{
    clsKXAdr copy = image;
    return storeInImage(item, copy);
}

void acceptInImage(const clsData& item, clsKXAdr& image)
{
    if (item.MType() == ItemType::Bit)
        image.acceptBits(item.Address(), item.BitMask());
    else
        image.accept(item.Address(), item.DataLen());
}
