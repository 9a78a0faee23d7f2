#include "WrittenItems.h"

#include "ModelData.h"
#include "Tags.h"
#include "clsLibrary.h"

bool carries(const ModelData& model, const clsKXAdr& image, int i, const ItemData& item)
{
    if (image.WAdr(i).isEmpty())
        return false;
    if (image.WCmd(i) == u"SetAnalog" || image.WCmd(i) == u"SetDigital")
        return model.lookup.find(image.WTag(i)) == &item;
    if (image.WCmd(i) != u"Direct")
        return false;
    const qint64 start = model.library().toLong(QStringLiteral("&h") + image.WAdr(i), 0);
    const qint64 address = model.library().toLong(QStringLiteral("&h") + item.Address(), -1);
    return address >= start && address + item.DataLen() <= start + image.WCnt(i);
}

bool isWritten(const ModelData& model, const ItemData& item)
{
    const clsKXAdr* image = model.images.find(item.WSection());
    if (image == nullptr || item.isReadOnly() || item.MType() == ItemType::String)
        return false;
    for (int i = 1; i <= image->WMsgMax(); ++i) {
        if (carries(model, *image, i, item))
            return true;
    }
    return false;
}

bool goesOutAtOnce(const ModelData& model, const ItemData& item)
{
    const bool isTerm = item.Key() == tags::kUnit || item.Key() == tags::kInputRange;
    return isTerm && !model.isOffLine() && isWritten(model, item);
}

bool isRead(const ModelData& model, const ItemData& item)
{
    const clsKXAdr* image = model.images.find(item.RSection());
    return image != nullptr && !image->isCommandsOnly();
}

bool hasValue(const ModelData& model, const ItemData& item)
{
    return item.isKnown() && (model.isOffLine() || !isRead(model, item) || !item.holdsDefault());
}
