#include "FrameParameters.h"

#include "FrameFields.h"
#include "ModelData.h"
#include "ProtocolNumbers.h"
#include "ReadCommands.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

constexpr int kHexadecimal = 16;

// In memory requests the address is as the files have it, without a sign.
bool isMoved(const ModelData& model, const FrameFields& fields, const ItemData& item)
{
    const clsKXAdr* image = model.images.find(item.RSection());
    bool isHex = false;
    const qint64 address = item.Address().toUInt(&isHex, kHexadecimal);
    const qint64 start = *fields.address;
    return isHex && image != nullptr && !image->m_bModbus && address < start + fields.count.value_or(0) &&
           address + std::max(item.DataLen(), 1) > start;
}

// Function that a write command of a comm file sends.
int functionOf(const QString& command)
{
    return command == u"SetAnalog"    ? functioncode::kWriteRegister
           : command == u"SetDigital" ? functioncode::kWriteCoil
                                      : 0;
}

bool isAmong(const FrameFields& fields, const clsLibrary& library, const QString& number)
{
    const int first = *fields.reference();
    const int wanted = library.toLong(number, 0);
    return wanted >= first && wanted < first + std::max(fields.count.value_or(1), 1);
}

// Whether an entry of the image that moves the frame's reference numbers names the item. One that reads several names
// the first alone: the others are the items of its section.
bool isNamed(const clsKXAdr& image, const FrameFields& fields, const clsLibrary& library, const ItemData& item)
{
    for (int i = 1; i <= image.MsgMax(); ++i) {
        const ReadCommand* command = findReadCommand(image.Cmd(i));
        if (command != nullptr && command->functionCode == fields.function && isAmong(fields, library, image.Adr(i)) &&
            (image.Cnt(i) > 1 || image.Tag(i) == item.Key()))
            return true;
    }
    for (int i = 1; i <= image.WMsgMax(); ++i) {
        if (functionOf(image.WCmd(i)) == fields.function && isAmong(fields, library, image.WAdr(i)) &&
            image.WTag(i) == item.Key())
            return true;
    }
    return false;
}

} // namespace

QStringList parametersOf(const ModelData& model, const FrameFields& fields)
{
    QStringList names;
    if (!fields.address)
        return names;
    for (const auto& item : model.items) {
        const clsKXAdr* image = model.images.find(item->RSection());
        const bool moved = !fields.reference() ? isMoved(model, fields, *item)
                           : image != nullptr  ? isNamed(*image, fields, model.library(), *item)
                                               : false;
        const QString name = moved ? model.library().tranStr(item->nameOrTag()) : QString();
        if (moved && !names.contains(name))
            names << name;
    }
    return names;
}
