#include "ReadCommands.h"

#include "ProtocolNumbers.h"

namespace {

constexpr ReadCommand kReadCommands[] = {
    {u"GetAnalogInput", u"(AlIpt)S:", &clsModbus::ReadAnalogInputData, false, functioncode::kReadInputRegisters},
    {u"GetAnalogSet", u"(AlSet)S:", &clsModbus::ReadAnalogSetValue, false, functioncode::kReadHoldingRegisters},
    {u"GetDigitalInput", u"(DgIpt)S:", &clsModbus::ReadDigitalInputData, false, functioncode::kReadDiscreteInputs},
    {u"GetDigitalSet", u"(DgSet)S:", &clsModbus::ReadDigitalSetValue, false, functioncode::kReadCoils},
    {u"Direct", u"(Dirct)S:", &clsModbus::ReadDirectMemory, true, functioncode::kMemory},
};

} // namespace

const ReadCommand* findReadCommand(const QString& name)
{
    for (const ReadCommand& command : kReadCommands) {
        if (name == QStringView(command.name))
            return &command;
    }
    return nullptr;
}
