#include "EntryOrder.h"

#include "ItemData.h"
#include "Tags.h"

#include <algorithm>
#include <numeric>

namespace {

enum Rank { kUnit, kRange, kPoint, kAlarmType, kTable, kRest };

Rank rankOf(const ItemData* item)
{
    const QString tag = item == nullptr ? QString() : item->Key();
    if (tag == tags::kUnit)
        return kUnit;
    if (tag == tags::kInputRange)
        return kRange;
    if (tag == tags::kPoint)
        return kPoint;
    if (tag.startsWith(tags::kAlarmTypes))
        return kAlarmType;
    const bool isTable = item != nullptr && (item->MType() == ItemType::Multi || item->MType() == ItemType::Input);
    return isTable ? kTable : kRest;
}

} // namespace

std::vector<std::size_t> entryOrder(const std::vector<const ItemData*>& items)
{
    std::vector<Rank> ranks(items.size());
    std::transform(items.begin(), items.end(), ranks.begin(), rankOf);
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t left, std::size_t right) { return ranks[left] < ranks[right]; });
    return order;
}

bool decidesOthers(const ItemData& item)
{
    return rankOf(&item) <= kAlarmType;
}
