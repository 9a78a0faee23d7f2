#include "ItemLookup.h"

ItemData* ItemLookup::find(const QString& tag) const
{
    if (ItemData* exact = byTag.value(tag, nullptr))
        return exact;
    for (int n = 1; n <= 9; ++n) {
        if (ItemData* numbered = byTag.value(tag + QString::number(n), nullptr))
            return numbered;
    }
    return nullptr;
}
