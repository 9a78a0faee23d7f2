#pragma once

#include <cstddef>
#include <vector>

class ItemData;

// The order in which several values are to be entered, as indexes of the items. Settings that decide how others are
// looked up, scaled and limited come first: the unit chooses the table of the input range, the range sets the decimal
// point and the limits, the point and the alarm types scale the rest; other choices from tables set items too. What
// ranks equal keeps its order. A null item (a value without a parameter) counts among the rest.
std::vector<std::size_t> entryOrder(const std::vector<const ItemData*>& items);

// Whether a change of the item changes how others are shown, scaled or locked.
bool decidesOthers(const ItemData& item);
