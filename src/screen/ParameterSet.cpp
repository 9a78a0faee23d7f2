#include "ParameterSet.h"

#include "EntryOrder.h"
#include "ItemValue.h"
#include "ModelData.h"
#include "Tags.h"
#include "WrittenItems.h"

ParameterSet currentSet(const ModelData& model)
{
    ParameterSet set{model.lookup.modelString, {}};
    set.values.reserve(static_cast<qsizetype>(model.items.size()));
    for (const auto& item : model.items)
        set.values.append({item->Key(), hasValue(model, *item) ? item->Data() : QString()});
    return set;
}

QStringList setValues(ModelData& model, const QVector<QPair<QString, QString>>& values)
{
    std::vector<const ItemData*> items;
    items.reserve(static_cast<size_t>(values.size()));
    for (const auto& entry : values)
        items.push_back(model.itemOf(entry.first));
    QStringList changed;
    for (const size_t place : entryOrder(items)) {
        const auto& [tag, value] = values[static_cast<qsizetype>(place)];
        if (tag == tags::kUnit && value.isEmpty())
            continue;
        clsData& item = *model.itemOf(tag);
        if (item.Data() != value && !item.isReadOnly()) {
            item.Edit = EditState::kChanged;
            item.cause = {ChangeCause::Kind::Loaded, {}};
            changed << tag;
        }
        item.setData(value);
        item.setKnown(!value.isEmpty());
        followUnit(item, model.lookup);
    }
    return changed;
}
