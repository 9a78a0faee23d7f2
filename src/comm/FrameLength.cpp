#include "FrameLength.h"

#include "ProtocolNumbers.h"

using namespace functioncode;

namespace framelength {

int ofReply(int functionCode, int items, bool writesMemory)
{
    switch (functionCode) {
    case kReadCoils:
    case kReadDiscreteInputs:
        return 3 + (items + 7) / 8;
    case kReadHoldingRegisters:
    case kReadInputRegisters:
        return 3 + 2 * items;
    case kWriteCoil:
    case kWriteRegister:
    case kWriteRegisters:
        return 6;
    case kMemory:
        return writesMemory ? 8 : 4 + items;
    case kReadFloats:
        return 4 + 4 * items;
    case kWriteFloats:
        return 7;
    default:
        return 0;
    }
}

qsizetype ofRtuRequest(const QByteArray& begin)
{
    constexpr qsizetype kShortest = 8;
    if (begin.size() < kShortest)
        return 0;
    const auto at = [&](qsizetype index) { return static_cast<quint8>(begin[index]); };
    switch (at(1)) {
    case kWriteCoils:
    case kWriteRegisters:
        return 9 + at(6);
    case kMemory:
        return 10 + (at(2) != 0 ? at(7) : 0);
    case kReadFloats:
        return 9;
    case kWriteFloats:
        return 10 + at(7);
    default:
        return kShortest;
    }
}

} // namespace framelength
