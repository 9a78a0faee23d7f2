#include "WrittenItems.h"

#include "clsKX.h"
#include "clsLibrary.h"

bool carries(const clsKX& kx, const clsKXAdr& image, int i, const clsData& item)
{
    if (image.WAdr(i).isEmpty())
        return false;
    if (image.WCmd(i) == u"SetAnalog" || image.WCmd(i) == u"SetDigital")
        return kx.getDataByTag(image.WTag(i)) == &item;
    if (image.WCmd(i) != u"Direct")
        return false;
    const qint64 start = kx.library().toLong(QStringLiteral("&h") + image.WAdr(i), 0);
    const qint64 address = kx.library().toLong(QStringLiteral("&h") + item.Address(), -1);
    return address >= start && address + item.DataLen() <= start + image.WCnt(i);
}

bool isWritten(const clsKX& kx, const clsData& item)
{
    const clsKXAdr* image = kx.ColAdr().find(item.WSection());
    if (image == nullptr || item.isReadOnly() || item.MType() == ItemType::String)
        return false;
    for (int i = 1; i <= image->WMsgMax(); ++i) {
        if (carries(kx, *image, i, item))
            return true;
    }
    return false;
}

bool isRead(const clsKX& kx, const clsData& item)
{
    const clsKXAdr* image = kx.ColAdr().find(item.RSection());
    return image != nullptr && !image->isCommandsOnly();
}
