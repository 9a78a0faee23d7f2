#include "EntryOrder.h"

#include "clsData.h"

#include <algorithm>
#include <numeric>

namespace {

enum Rank { kUnit, kRange, kPoint, kAlarmType, kTable, kRest };

Rank rankOf(const clsData* item)
{
    const QString tag = item == nullptr ? QString() : item->Key();
    if (tag == u"SWQCF")
        return kUnit;
    if (tag == u"PQRNO")
        return kRange;
    if (tag == u"SVDOT")
        return kPoint;
    if (tag.startsWith(u"PQKAL"))
        return kAlarmType;
    const bool isTable = item != nullptr && (item->MType() == ItemType::Multi || item->MType() == ItemType::Input);
    return isTable ? kTable : kRest;
}

} // namespace

std::vector<std::size_t> entryOrder(const std::vector<const clsData*>& items)
{
    std::vector<Rank> ranks(items.size());
    std::transform(items.begin(), items.end(), ranks.begin(), rankOf);
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t left, std::size_t right) { return ranks[left] < ranks[right]; });
    return order;
}

bool decidesOthers(const clsData& item)
{
    return rankOf(&item) <= kAlarmType;
}
