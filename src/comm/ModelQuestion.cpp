#include "ModelQuestion.h"

#include "ModelCodes.h"
#include "ProtocolNumbers.h"
#include "clsKXAdr.h"

void ModelQuestion::prepare(int slave, int mode, int address)
{
    m_channel.setSlave(slave, mode);
    m_channel.modbus().ReadDirectMemory(address, modelcodes::kModelStringLength);
}

RequestChannel::Result ModelQuestion::exchange()
{
    m_channel.traceRequest(QStringLiteral("(Dirct)S:"));
    return m_channel.exchange(functioncode::kMemory);
}

QString ModelQuestion::answer() const
{
    clsKXAdr holder;
    holder.setLib(&m_library);
    holder.setData(m_channel.modbus().DigitalVals());
    return holder.getString(QString(), modelcodes::kModelStringLength, QString());
}
