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

bool storeInImage(const clsData& item, clsKXAdr& image)
{
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
