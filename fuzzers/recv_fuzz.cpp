// Is a frame ever taken that is not sound, or a value that is not in it? And does a slave answer every sound request,
// and nothing else, with a sound frame?
// Input: a header that chooses mode and request, then a frame. With kFinish it is a binary frame that gets its check
// value here, which no mutation would hit; without, it is taken as it came in from the line.

#include "FuzzInput.h"
#include "IndexedBytes.h"
#include "ModbusError.h"
#include "RealModel.h"
#include "SimulatedController.h"
#include "clsModbus.h"

#include <QStringList>

#include <algorithm>
#include <bit>
#include <optional>

namespace {

enum Flag { kAscii = 1, kFinish = 2, kSupported = 4, kIllegal = 8 };
constexpr size_t kHeaderBytes = 8;
constexpr qsizetype kLongestFrame = 250; // has both wire forms
constexpr int kExceptionMark = 128;

quint8 byteAt(const QByteArray& bytes, qsizetype index)
{
    return index < bytes.size() ? static_cast<quint8>(bytes[index]) : 0;
}

struct Input
{
    int flags = 0;
    int request = 0;
    int slave = 1;
    qint32 reference = 0;
    int count = 0;
    QByteArray frame;

    Input(const uint8_t* data, size_t size)
        : flags(data[0]), request(data[1] % 11), slave(1 + data[2] % 247),
          reference(qint32(data[3]) << 16 | data[4] << 8 | data[5]), count(data[6] << 8 | data[7]),
          frame(reinterpret_cast<const char*>(data + kHeaderBytes), static_cast<qsizetype>(size - kHeaderBytes))
    {}
    bool has(Flag flag) const { return (flags & flag) != 0; }
};

// Bit by bit, as the standard words it.
quint16 plainCrc(const QByteArray& bytes)
{
    unsigned crc = 0xFFFF;
    for (const char c : bytes) {
        crc ^= static_cast<quint8>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xA001 : crc >> 1;
    }
    return static_cast<quint16>(crc);
}

QByteArray wireOf(const QByteArray& frame, bool ascii)
{
    if (!ascii) {
        const quint16 crc = plainCrc(frame);
        return frame + static_cast<char>(crc & 0xFF) + static_cast<char>(crc >> 8);
    }
    int sum = 0;
    for (const char c : frame)
        sum += static_cast<quint8>(c);
    return ':' + (frame + static_cast<char>(-sum)).toHex().toUpper() + "\r\n";
}

// The binary frame on the line, when there is a sound one.
std::optional<QByteArray> soundFrame(const QByteArray& wire, bool ascii)
{
    if (!ascii) {
        if (wire.size() < 4 || wireOf(wire.chopped(2), false) != wire)
            return {};
        return wire.chopped(2);
    }
    // An odd number of characters; pairs of digits from the colon to the carriage return, what follows that does not
    // count.
    const auto end = wire.indexOf('\r');
    const QByteArray digits =
        end < 0 ? wire.mid(1).chopped(wire.isEmpty() ? 0 : (wire.size() - 1) % 2) : wire.mid(1, end - 1);
    const QByteArray decoded = QByteArray::fromHex(digits);
    if (wire.size() % 2 == 0 || !wire.startsWith(':') || decoded.toHex().toUpper() != digits || decoded.size() < 3)
        return {};
    const QByteArray frame = decoded.chopped(1);
    if (wireOf(frame, true) != ':' + digits + "\r\n")
        return {};
    return frame;
}

void prepare(clsModbus& modbus, const Input& input, bool ascii)
{
    modbus.setTransmissionMode(ascii ? 1 : 0);
    modbus.setSlaveAddress(input.slave);
    const std::vector<qint16> words(121, 0x1234);
    const std::vector<float> floats(61, 1.5F);
    try {
        switch (input.request) {
        case 0:
            modbus.ReadDigitalSetValue(input.reference, input.count);
            break;
        case 1:
            modbus.ReadDigitalInputData(input.reference, input.count);
            break;
        case 2:
            modbus.ReadAnalogSetValue(input.reference, input.count);
            break;
        case 3:
            modbus.ReadAnalogInputData(input.reference, input.count);
            break;
        case 4:
            modbus.WriteDigitalSetValue(input.reference, input.count != 0);
            break;
        case 5:
            modbus.WriteAnalogSetValue(input.reference, static_cast<qint16>(input.count));
            break;
        case 6:
            modbus.WriteAnalogSetValues(input.reference, words, input.count);
            break;
        case 7:
            modbus.ReadFloatingData(input.reference, input.count);
            break;
        case 8:
            modbus.WriteFloatingData(input.reference, floats, input.count);
            break;
        case 9:
            modbus.ReadDirectMemory(input.reference, input.count);
            break;
        default:
            modbus.WriteDirectMemory(input.reference, input.count);
            break;
        }
    } catch (const ModbusError&) {
        require(modbus.SendSize() == 0 && modbus.RecvSize() == 0, "a bad request leaves none");
    }
}

void checkRequest(const clsModbus& modbus, bool ascii)
{
    if (modbus.SendSize() == 0)
        return;
    const QByteArray wire = modbus.GetSendMessage();
    require(wire.size() == modbus.SendSize() && wire.size() <= 513, "a request fits the line");
    require(modbus.RecvSize() > 0 && modbus.RecvSize() <= 513, "its reply does, too");
    const auto frame = soundFrame(wire, ascii);
    require(frame && byteAt(*frame, 0) == modbus.SlaveAddress(), "a request is a sound frame");
}

// The values that an accepted reply brought are those in its frame.
void checkValues(const clsModbus& modbus, const QByteArray& frame, const QByteArray& request)
{
    const int function = byteAt(frame, 1);
    const int bytes = function == 66 ? byteAt(request, 7) : byteAt(frame, 2);
    const bool isRead = function != 66 || byteAt(request, 2) == 0;
    for (int i = 1; i <= bytes && isRead && (function <= 2 || function == 66); ++i)
        require(modbus.DigitalVal(i) == byteAt(frame, (function == 66 ? 3 : 2) + i), "bytes are those of the reply");
    for (int i = 1; i <= bytes / 2 && (function == 3 || function == 4); ++i)
        require(modbus.AlalogVal(i) == clsModbus::ByteToInt(frame, 2 * i + 1), "registers are those of the reply");
    for (int i = 1; i <= byteAt(frame, 3) / 4 && function == 70; ++i) {
        const quint32 bits = std::bit_cast<quint32>(modbus.FloatingVal(i));
        for (int k = 0; k < 4; ++k)
            require((bits >> (8 * k) & 0xFF) == byteAt(frame, 4 * i + k), "singles are those of the reply");
    }
    if (function == 5 || function == 6)
        require(frame == request, "an echo repeats the request");
}

struct Verdict
{
    bool taken = false;
    int code = 0;
    IndexedBytes values;
};

Verdict receive(clsModbus& modbus, const QByteArray& wire)
{
    QByteArray bytes = wire;
    const bool taken = modbus.SetRecvMessage(bytes, static_cast<qint32>(bytes.size()));
    return {taken, modbus.ErrorCode(), modbus.DigitalVals()};
}

void checkReply(const Input& input, const QByteArray& wire, bool ascii)
{
    clsModbus modbus;
    prepare(modbus, input, ascii);
    checkRequest(modbus, ascii);
    const QByteArray request = soundFrame(modbus.GetSendMessage(), ascii).value_or(QByteArray());
    const Verdict verdict = receive(modbus, wire);
    require(verdict.taken == (verdict.code == clsModbus::kNoError), "what is taken has no error, what is not has one");
    const auto frame = soundFrame(wire, ascii);
    const bool isOurs = frame && wire.size() <= 513 && byteAt(*frame, 0) == input.slave;
    require(isOurs || verdict.code >= clsModbus::kCrcError, "only a sound frame of this slave says something");
    if (isOurs && byteAt(*frame, 1) > kExceptionMark)
        require(verdict.code == (byteAt(*frame, 2) != 0 ? byteAt(*frame, 2) : clsModbus::kBadReply),
                "an exception is told by its code");
    if (verdict.taken) {
        checkValues(modbus, *frame, request);
        require(modbus.GetRecvMessage().size() == modbus.RecvSize(), "the reply kept is as long as expected");
    }

    // Behind the bytes that count anything may follow.
    clsModbus other;
    prepare(other, input, ascii);
    QByteArray longer = wire + "\x5A:\r\n";
    require(other.SetRecvMessage(longer, static_cast<qint32>(wire.size())) == verdict.taken &&
                other.ErrorCode() == verdict.code,
            "bytes behind the reply do not count");
}

void checkBothModes(const Input& input)
{
    Verdict verdicts[2];
    for (const int mode : {0, 1}) {
        clsModbus modbus;
        prepare(modbus, input, mode == 1);
        verdicts[mode] = receive(modbus, wireOf(input.frame, mode == 1));
    }
    require(verdicts[0].taken == verdicts[1].taken && verdicts[0].code == verdicts[1].code &&
                verdicts[0].values.bytes == verdicts[1].values.bytes,
            "both modes tell the same");
}

// A slave whose handlers answer or refuse, and count how often they are asked.
class Slave : public clsModbus
{
public:
    explicit Slave(const Input& input)
    {
        setMasterMode(true);
        setSlaveAddress(input.slave);
        setTransmissionMode(input.has(kAscii) ? 1 : 0);
        const bool supported = input.has(kSupported);
        const bool illegal = input.has(kIllegal);
        connect(this, &clsModbus::FunctionCodeSupported, this, [this, supported](int, bool& answer) {
            ++asked;
            answer = supported;
        });
        connect(this, &clsModbus::ReadCoils, this, [this, illegal](int, int quantity, bool& bad) {
            bad = illegal;
            if (!bad)
                ResponsReadCoils((quantity + 7) / 8, {1, QByteArray((quantity + 7) / 8, 'c')});
        });
        connect(this, &clsModbus::ReadHoldingRegisters, this, [this, illegal](int, int quantity, bool& bad) {
            bad = illegal;
            if (!bad)
                ResponsReadHoldingRegisters(2 * quantity, std::vector<qint16>(static_cast<size_t>(quantity) + 1, -2));
        });
        connect(this, &clsModbus::WriteMultipleRegisters, this,
                [this, illegal](int start, int quantity, int bytes, const std::vector<qint16>& values, bool& bad) {
                    require(bytes == 2 * quantity && values.size() == static_cast<size_t>(quantity) + 1,
                            "all registers of a write arrive");
                    bad = illegal;
                    if (!bad)
                        ResponsWriteMultipleRegisters(static_cast<qint16>(start), static_cast<qint16>(quantity));
                });
        connect(this, &clsModbus::WriteMultipleCoils, this,
                [illegal](int, int quantity, int bytes, const QByteArray& coils, bool& bad) {
                    require(bytes == (quantity + 7) / 8 && coils.size() == bytes, "all coils of a write arrive");
                    bad = illegal;
                });
    }
    int asked = 0;
};

// A response is a sound frame of the slave, for the function asked for or as its exception.
void checkResponse(const QByteArray& wire, const QByteArray& request, bool ascii)
{
    const auto response = soundFrame(wire, ascii);
    require(response && wire.size() <= 513, "a response is a sound frame");
    require(byteAt(*response, 0) == byteAt(request, 0), "it comes from the slave that was asked");
    const int asked = byteAt(request, 1);
    const int answered = byteAt(*response, 1);
    require(answered == asked || answered == asked + kExceptionMark, "it is for the function asked for",
            QString::fromLatin1(response->toHex()));
}

void checkSlave(const Input& input, const QByteArray& wire, bool ascii)
{
    Slave slave(input);
    const Verdict verdict = receive(slave, wire);
    require(!verdict.taken && verdict.code != clsModbus::kNoError, "a slave takes no replies");
    const auto frame = soundFrame(wire, ascii);
    const bool isOurs = frame && wire.size() <= 513 && byteAt(*frame, 0) == input.slave;
    require(slave.asked == (isOurs ? 1 : 0), "a slave hears each sound request of its own once");
    if (slave.SendSize() > 0)
        checkResponse(slave.GetSendMessage(), *frame, ascii);
}

void checkController(const Input& input, const QByteArray& wire, bool ascii)
{
    static RealModel model;
    static SimulatedController rtu(model.library, 1, RealModel::kModelString, 1, 0);
    static SimulatedController text(model.library, 1, RealModel::kModelString, 1, 1);
    SimulatedController& controller = ascii ? text : rtu;
    controller.restart();
    static const QByteArray before = controller.state();
    const QByteArray response = controller.answer(wire, input.has(kIllegal) ? 2 : 0);
    const auto frame = soundFrame(wire, ascii);
    const bool isOurs = frame && wire.size() <= 513 && byteAt(*frame, 0) == 1;
    require(isOurs || response.isEmpty(), "a controller answers sound requests of its own only");
    const bool refused = response.isEmpty() || byteAt(*soundFrame(response, ascii), 1) > kExceptionMark;
    const bool isWrite = frame && QByteArray("\x05\x06\x0F\x10\x42\x47").contains((*frame)[1]);
    require(!refused || !isWrite || controller.state() == before, "what is refused changes nothing");
    if (!response.isEmpty())
        checkResponse(response, *frame, ascii);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    makeRepeatable();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < kHeaderBytes)
        return 0;
    Input input(data, size);
    const bool ascii = input.has(kAscii);
    const bool finish = input.has(kFinish) && input.frame.size() >= 2;
    if (finish)
        input.frame.truncate(kLongestFrame);
    const QByteArray wire = finish ? wireOf(input.frame, ascii) : input.frame;
    checkReply(input, wire, ascii);
    if (finish)
        checkBothModes(input);
    checkSlave(input, wire, ascii);
    checkController(input, wire, ascii);
    return 0;
}
