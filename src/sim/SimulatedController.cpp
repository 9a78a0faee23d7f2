#include "SimulatedController.h"

#include "ModbusError.h"
#include "ModelCodes.h"
#include "ProtocolNumbers.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>
#include <bit>

namespace {

constexpr int kMaxFloats = 60; // of one request

QByteArray bigSingle(float value)
{
    const auto bits = std::bit_cast<quint32>(value);
    return clsModbus::IntToByte(static_cast<qint16>(bits >> 16U)) + clsModbus::IntToByte(static_cast<qint16>(bits));
}

bool isSupported(int code)
{
    return (code >= functioncode::kReadCoils && code <= functioncode::kWriteRegister) ||
           code == functioncode::kWriteRegisters || code == functioncode::kMemory ||
           code == functioncode::kReadFloats || code == functioncode::kWriteFloats;
}

QByteArray reversed(QByteArray bytes)
{
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

} // namespace

SimulatedController::SimulatedController(clsLibrary& library, int number, const QString& modelString, int slave,
                                         int mode, QObject* parent)
    : QObject(parent), m_kx(library)
{
    m_kx.setSpread(&m_grid);
    m_kx.load(number, &library, modelString);
    layOut(modelString);
    m_atStart = m_values;
    m_modbus.setMasterMode(true);
    m_modbus.setSlaveAddress(slave);
    m_modbus.setTransmissionMode(mode);
    connectModbus();
}

void SimulatedController::layOut(const QString& modelString)
{
    for (int i = 0; i < m_kx.ColAdr().count(); ++i)
        layImage(m_kx.ColAdr().at(i));
    for (const auto& item : m_kx.items())
        layItem(*item, modelString);
}

void SimulatedController::layImage(const clsKXAdr& image)
{
    const clsLibrary& library = m_kx.library();
    const auto defaultOf = [&](const QString& tag) {
        const clsData* item = m_kx.getDataByTag(tag);
        return item == nullptr ? qint16(0) : library.toInteger(item->DefData(), 0);
    };
    for (int i = 1; i <= image.MsgMax(); ++i) {
        const int reference = library.toLong(image.Adr(i), 0);
        for (int k = 0; k < image.Cnt(i); ++k) {
            const qint16 value = k == 0 ? defaultOf(image.Tag(i)) : qint16(0);
            if (image.Cmd(i) == u"Direct")
                m_values.memory[static_cast<quint32>(library.toLong(QStringLiteral("&h") + image.Adr(i), 0)) +
                                static_cast<quint32>(k)] = 0;
            else if (image.Cmd(i) == u"GetAnalogInput")
                m_values.inputs[reference - reference::kInputRegister + k] = value;
            else if (image.Cmd(i) == u"GetAnalogSet")
                m_values.holdings[reference - reference::kHoldingRegister + k] = value;
            else if (image.Cmd(i) == u"GetDigitalInput")
                m_values.discretes[reference - reference::kDiscreteInput + k] = value != 0;
            else if (image.Cmd(i) == u"GetDigitalSet")
                m_values.coils[reference - reference::kCoil + k] = value != 0;
        }
    }
    for (int i = 1; i <= image.WMsgMax(); ++i) {
        const int reference = library.toLong(image.WAdr(i), 0);
        if (image.WCmd(i) == u"SetAnalog")
            m_values.holdings.try_emplace(reference - reference::kHoldingRegister, defaultOf(image.WTag(i)));
        else if (image.WCmd(i) == u"SetDigital")
            m_values.coils.try_emplace(reference - reference::kCoil, defaultOf(image.WTag(i)) != 0);
    }
}

void SimulatedController::layItem(const clsData& item, const QString& modelString)
{
    const clsKXAdr* image = m_kx.ColAdr().find(item.RSection());
    if (image == nullptr || image->m_bModbus)
        return;
    const clsLibrary& library = m_kx.library();
    const auto address = static_cast<quint32>(library.toLong(QStringLiteral("&h") + item.Address(), 0));
    const QString value = item.DefData();
    if (item.DataLen() == 1 && item.MType() == ItemType::Bit) {
        const int bit = library.toLong(value, 0) != 0 ? item.BitMask() : 0;
        store(address, QByteArray(1, static_cast<char>(m_values.memory[address] | bit)));
    } else if (item.DataLen() == 1) {
        store(address, QByteArray(1, static_cast<char>(library.toLong(value, 0))));
    } else if (item.DataLen() == 2) {
        store(address, clsModbus::IntToByte(library.toInteger(value, 0)));
    } else if (item.DataLen() >= 4 && item.MType() == ItemType::Data) {
        store(address, bigSingle(library.toSingle(value, 0)));
        m_floatAddress[static_cast<int>(m_floatAddress.size())] = address;
    } else if (item.DataLen() >= 4) {
        const QString text = address == modelcodes::kModelAddress ? modelString : value;
        store(address, library.context().machine.codePage.fromText(text).leftJustified(item.DataLen(), ' ', true));
    }
}

void SimulatedController::store(quint32 address, const QByteArray& bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i)
        m_values.memory[address + static_cast<quint32>(i)] = static_cast<quint8>(bytes[i]);
}

void SimulatedController::connectModbus()
{
    connect(&m_modbus, &clsModbus::FunctionCodeSupported, this,
            [this](int code, bool& supported) { supported = !m_refusing && isSupported(code); });
    connect(&m_modbus, &clsModbus::ReadCoils, this, [this](int s, int n, bool& bad) { readBits(s, n, bad, true); });
    connect(&m_modbus, &clsModbus::ReadDiscreteInputs, this,
            [this](int s, int n, bool& bad) { readBits(s, n, bad, false); });
    connect(&m_modbus, &clsModbus::ReadHoldingRegisters, this,
            [this](int s, int n, bool& bad) { readRegisters(m_values.holdings, s, n, bad, true); });
    connect(&m_modbus, &clsModbus::ReadInputRegisters, this,
            [this](int s, int n, bool& bad) { readRegisters(m_values.inputs, s, n, bad, false); });
    connect(&m_modbus, &clsModbus::WriteSingleCoil, this, [this](int address, int value, bool& bad) {
        bad = !m_values.coils.contains(address);
        if (bad)
            return;
        m_values.coils[address] = value != 0;
        m_modbus.ResponsWriteSingleCoil(static_cast<qint16>(address), static_cast<qint16>(value));
    });
    connect(&m_modbus, &clsModbus::WriteSingleRegister, this, [this](int address, int value, bool& bad) {
        bad = !m_values.holdings.contains(address);
        if (bad)
            return;
        m_values.holdings[address] = static_cast<qint16>(value);
        m_modbus.ResponsWriteSingleRegister(static_cast<qint16>(address), static_cast<qint16>(value));
    });
    connect(&m_modbus, &clsModbus::WriteMultipleRegisters, this,
            [this](int start, int n, int, const std::vector<qint16>& values, bool& bad) {
                for (int i = 0; i < n; ++i)
                    bad = bad || !m_values.holdings.contains(start + i);
                for (int i = 0; i < n && !bad; ++i)
                    m_values.holdings[start + i] = values.at(static_cast<size_t>(i) + 1);
                if (!bad)
                    m_modbus.ResponsWriteMultipleRegisters(static_cast<qint16>(start), static_cast<qint16>(n));
            });
    connect(&m_modbus, &clsModbus::UserDefinedFunction, this,
            [this](int code, const QByteArray& request, int) { userDefined(code, request); });
}

QByteArray SimulatedController::answer(const QByteArray& request, int forcedException)
{
    QByteArray bytes = request;
    m_modbus.ErrorResponse(0, 0);
    const QByteArray unanswered = m_modbus.GetSendMessage();
    m_refusing = forcedException != 0;
    m_modbus.SetRecvMessage(bytes, static_cast<qint32>(bytes.size()));
    if (m_modbus.GetSendMessage() == unanswered)
        return {}; // for another slave, or not a sound frame: a controller keeps silent
    if (forcedException != 0)
        m_modbus.ErrorResponse(static_cast<quint8>(bytes[1]), forcedException);
    return m_modbus.GetSendMessage();
}

void SimulatedController::readBits(int start, int quantity, bool& illegal, bool coils)
{
    const auto& table = coils ? m_values.coils : m_values.discretes;
    IndexedBytes bits{1, QByteArray((quantity + 7) / 8, '\0')};
    for (int i = 0; i < quantity; ++i) {
        const auto found = table.find(start + i);
        illegal = illegal || found == table.end();
        if (!illegal && found->second)
            bits.set(1 + i / 8, static_cast<quint8>(bits.at(1 + i / 8) | 1 << (i % 8)));
    }
    if (illegal)
        return;
    if (coils)
        m_modbus.ResponsReadCoils(static_cast<int>(bits.bytes.size()), bits);
    else
        m_modbus.ResponsReadDiscreteInputs(static_cast<int>(bits.bytes.size()), bits);
}

void SimulatedController::readRegisters(const std::map<int, qint16>& table, int start, int quantity, bool& illegal,
                                        bool holding)
{
    std::vector<qint16> values(1, 0);
    for (int i = 0; i < quantity; ++i) {
        const auto found = table.find(start + i);
        illegal = illegal || found == table.end();
        values.push_back(illegal ? qint16(0) : found->second);
    }
    if (illegal)
        return;
    if (holding)
        m_modbus.ResponsReadHoldingRegisters(2 * quantity, values);
    else
        m_modbus.ResponsReadInputRegisters(2 * quantity, values);
}

void SimulatedController::userDefined(int functionCode, const QByteArray& request)
{
    constexpr qsizetype kShortest = 7;
    if (request.size() < kShortest)
        m_modbus.ErrorResponse(functionCode, exceptioncode::kIllegalDataValue);
    else if (functionCode == functioncode::kMemory)
        directMemory(request);
    else
        floats(functionCode, request);
}

// 66: 00 or 01 (read, write), address of four bytes, count, and the bytes of a write.
void SimulatedController::directMemory(const QByteArray& request)
{
    const bool isWrite = request[2] != 0;
    quint32 address = 0;
    for (int i = 3; i < 7; ++i)
        address = address << 8U | static_cast<quint8>(request[i]);
    const int count = request.size() > 7 ? static_cast<quint8>(request[7]) : 0;
    if (count < 1 || count > clsModbus::kValues || (isWrite && request.size() != 8 + count)) {
        m_modbus.ErrorResponse(functioncode::kMemory, exceptioncode::kIllegalDataValue);
        return;
    }
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        const auto found = m_values.memory.find(address + static_cast<quint32>(i));
        if (found == m_values.memory.end()) {
            m_modbus.ErrorResponse(functioncode::kMemory, exceptioncode::kIllegalDataAddress);
            return;
        }
        bytes += static_cast<char>(found->second);
    }
    if (isWrite) {
        store(address, request.mid(8));
        m_modbus.ResponsUserDefined(functioncode::kMemory, request.mid(2, 6));
    } else {
        m_modbus.ResponsUserDefined(functioncode::kMemory, QByteArray(1, '\0') + static_cast<char>(count) + bytes);
    }
}

// 70 reads and 71 writes floating-point values: 00, start, count; least significant byte first on the line.
void SimulatedController::floats(int functionCode, const QByteArray& request)
{
    const int start = clsModbus::ByteToInt(request, 3);
    const int count = clsModbus::ByteToInt(request, 5);
    const bool isWrite = functionCode == functioncode::kWriteFloats;
    if (count < 1 || count > kMaxFloats || (isWrite && request.size() != 8 + 4 * count)) {
        m_modbus.ErrorResponse(functionCode, exceptioncode::kIllegalDataValue);
        return;
    }
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        const auto found = m_floatAddress.find(start + i);
        if (found == m_floatAddress.end()) {
            m_modbus.ErrorResponse(functionCode, exceptioncode::kIllegalDataAddress);
            return;
        }
        if (isWrite)
            store(found->second, reversed(request.mid(8 + 4 * i, 4)));
        for (quint32 k = 4; k-- > 0;)
            bytes += static_cast<char>(m_values.memory[found->second + k]);
    }
    const QByteArray head(1, '\0');
    m_modbus.ResponsUserDefined(functionCode,
                                isWrite ? head + request.mid(3, 4) : head + static_cast<char>(4 * count) + bytes);
}

platform::Result<> SimulatedController::findMemory(quint32 address, qsizetype count) const
{
    for (qsizetype i = 0; i < count; ++i) {
        const quint32 place = address + static_cast<quint32>(i);
        if (!m_values.memory.contains(place))
            return platform::Failure{QStringLiteral("the definition has no memory at %1; choose another address or "
                                                    "fewer bytes")
                                         .arg(QString::number(place, 16).toUpper())};
    }
    return {};
}

platform::Result<> SimulatedController::poke(quint32 address, const QByteArray& bytes)
{
    platform::Result<> found = findMemory(address, bytes.size());
    if (found.ok())
        store(address, bytes);
    return found;
}

QByteArray SimulatedController::state() const
{
    QByteArray text;
    for (const auto& [address, value] : m_values.memory)
        text += "MEM " + QByteArray::number(address, 16).toUpper() + ' ' +
                QByteArray(1, static_cast<char>(value)).toHex().toUpper() + '\n';
    for (const auto& [address, value] : m_values.inputs)
        text +=
            "IREG " + QByteArray::number(address + reference::kInputRegister) + ' ' + QByteArray::number(value) + '\n';
    for (const auto& [address, value] : m_values.holdings)
        text +=
            "REG " + QByteArray::number(address + reference::kHoldingRegister) + ' ' + QByteArray::number(value) + '\n';
    for (const auto& [address, value] : m_values.coils)
        text += "COIL " + QByteArray::number(address + reference::kCoil) + ' ' + (value ? "1\n" : "0\n");
    return text;
}
