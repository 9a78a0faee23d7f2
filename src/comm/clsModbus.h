#pragma once

#include "IndexedBytes.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <array>
#include <vector>

// Builds one Modbus request at a time, announces the length of its reply, checks and interprets the reply that is given
// back to it, and keeps the values of the last read. It never touches the port.
//
// Order of calls: SlaveAddress and TransmissionMode; a request operation; GetSendMessage and RecvSize for the link;
// SetRecvMessage with what came back; then the values (True) or ErrorCode (False).
// Bad arguments of a request raise ModbusError; the request before it stays as it was.
//
// With MasterMode True the object is a slave: SetRecvMessage takes a request and raises an event, whose handler builds
// the response. Handlers set the reference arguments, so connections must be direct.
class clsModbus : public QObject
{
    Q_OBJECT

public:
    static constexpr int kValues = 120; // values of each kind, index 1 to 120
    static constexpr int kReceiveBytes = 513;

    // Error codes beside the exception codes 1 to 255 that the controller sends.
    static constexpr int kNoError = 0;
    static constexpr int kCrcError = 10019;
    static constexpr int kLrcError = 10020;
    static constexpr int kBadReply = 10099; // malformed, too short, another slave, not matching the request

    explicit clsModbus(QObject* parent = nullptr);

    void setMasterMode(bool on) { m_masterMode = on; }
    int SlaveAddress() const { return m_slaveAddress; }
    void setSlaveAddress(int address); // 1 to 247
    int TransmissionMode() const { return m_transmissionMode; }
    void setTransmissionMode(int mode) { m_transmissionMode = mode; } // 0 RTU, 1 ASCII
    int SendSize() const { return static_cast<int>(m_wire.size()); }
    int RecvSize() const { return m_recvSize; } // expected bytes of the reply on the line
    int ErrorCode() const { return m_errorCode; }

    // Values of the last read, index 1 to 120; another index raises std::out_of_range.
    qint16 AlalogVal(int i) const { return m_registers.at(slot(i)); }
    void setAlalogVal(int i, qint16 value) { m_registers.at(slot(i)) = value; }
    void setFloatingVal(int i, float value) { m_floats.at(slot(i)) = value; }
    quint8 DigitalVal(int i) const { return m_bytes.at(slot(i)); }
    void setDigitalVal(int i, quint8 value) { m_bytes.at(slot(i)) = value; }
    IndexedBytes DigitalVals() const; // a copy, index 1 to 120
    void setDigitalVals(const IndexedBytes& values);

    // Requests. References count from 1, 10001, 30001, 40001 and 50001; arrays from index 1 (element 0 is not used).
    bool ReadDigitalSetValue(qint32 StartRefNumber, qint32 Count);
    bool ReadDigitalInputData(qint32 StartRefNumber, qint32 Count);
    bool ReadAnalogSetValue(qint32 StartRefNumber, qint32 Count);
    bool ReadAnalogInputData(qint32 StartRefNumber, qint32 Count);
    bool WriteDigitalSetValue(qint32 SetRefNumber, bool SetValue); // False, no error, outside 1 to 10000
    bool WriteAnalogSetValue(qint32 SetRefNumber, qint16 SetValue);
    bool ReadDirectMemory(qint32 StartMemoryAddress, qint32 Count);
    bool WriteDirectMemory(qint32 StartMemoryAddress, qint32 Count); // the first Count bytes of DigitalVal

    QByteArray GetSendMessage() const { return m_wire; }

    // Checks the first lngRecvSize bytes. In ASCII mode bytRecv holds the decoded frame afterwards.
    bool SetRecvMessage(QByteArray& bytRecv, qint32 lngRecvSize);

    static QByteArray IntToByte(qint16 intData);
    static qint16 ByteToInt(const QByteArray& ByteData, qint32 Offset); // bytes that are not there count as 0
    static QString ChangeMsg(const QString& strCommand);

    // Responses of a slave.
    void ResponsReadCoils(int ByteCount, const IndexedBytes& CoilStatus);
    void ResponsReadDiscreteInputs(int ByteCount, const IndexedBytes& InputsStatus);
    void ResponsReadHoldingRegisters(int ByteCount, const std::vector<qint16>& RegisterValue);
    void ResponsReadInputRegisters(int ByteCount, const std::vector<qint16>& InputsRegisters);
    void ResponsWriteSingleCoil(qint16 OutputAddress, qint16 OutputValue);
    void ResponsWriteSingleRegister(qint16 RegisterAddress, qint16 RegisterValue);
    void ResponsWriteMultipleRegisters(qint16 StartingAddress, qint16 Quantity);
    void ErrorResponse(int FunctionCode, int ExceptionCode);
    // The response to a function code of the maker's own: the bytes behind the function code.
    void ResponsUserDefined(int FunctionCode, const QByteArray& Data);

    // The rest of the master's and the slave's operations. No definition file asks for them, so the program itself does
    // not call them: they are here for those who use the class for other controllers.
    bool MasterMode() const { return m_masterMode; }
    float FloatingVal(int i) const { return m_floats.at(slot(i)); } // index 1 to 120, of the last read
    bool WriteAnalogSetValues(qint32 SetRefNumber, const std::vector<qint16>& SetValues, qint32 Count);
    bool ReadFloatingData(qint32 StartRefNumber, qint32 Count);
    bool WriteFloatingData(qint32 SetRefNumber, const std::vector<float>& SetValues, qint32 Count);
    bool LoopBackTest() { return false; }
    QString GetLastErrorMsg() const { return {}; }
    bool IsRetryError() const { return m_errorCode < 1 || m_errorCode > 18; }
    QByteArray GetRecvMessage() const { return m_received.left(m_recvSize); } // RecvSize bytes
    static bool MakeCRC16(QByteArray& bytBuff, qint32 lngByteCnt);            // behind the first lngByteCnt bytes
    static float IntToFloat(qint16 intValue, qint16 intDot);                  // intDot 1 to 4: decimal places
    void ResponsWriteMultipleCoils(qint16 StartingAddress, qint16 Quantity);

Q_SIGNALS:
    void FunctionCodeSupported(int FunctionCode, bool& Supported);
    void MakeErrorResponse(int FunctionCode, int ExceptionCode);
    void ReadCoils(int Start, int Quantity, bool& IllegalAddress);
    void ReadDiscreteInputs(int Start, int Quantity, bool& IllegalAddress);
    void ReadHoldingRegisters(int Start, int Quantity, bool& IllegalAddress);
    void ReadInputRegisters(int Start, int Quantity, bool& IllegalAddress);
    void WriteSingleCoil(int Address, int Value, bool& IllegalAddress);
    void WriteSingleRegister(int Address, int Value, bool& IllegalAddress);
    void WriteMultipleCoils(int Start, int Quantity, int ByteCount, const QByteArray& Coils, bool& IllegalAddress);
    void WriteMultipleRegisters(int Start, int Quantity, int ByteCount, const std::vector<qint16>& Registers,
                                bool& IllegalAddress);
    void UserDefinedFunction(int FunctionCode, const QByteArray& Request, int DataLength);
    void PublicFunction(int FunctionCode, const QByteArray& Request, int DataLength);

private:
    static size_t slot(int index) { return static_cast<size_t>(index) - 1; }
    bool isAscii() const { return m_transmissionMode != 0; }
    bool request(int functionCode, const QByteArray& data, int items, bool writesMemory = false);
    bool readReferences(int functionCode, qint32 offset, qint32 count);

    bool checkFrame(QByteArray& bytes, qsizetype length, QByteArray& frame);
    bool fail(int code);
    bool interpretReply(const QByteArray& frame);
    bool readBytes(const QByteArray& frame, int first, int count);
    bool readRegisters(const QByteArray& frame);
    bool readFloats(const QByteArray& frame);
    bool sameAt(const QByteArray& frame, int offset) const;

    void interpretRequest(const QByteArray& frame);
    void readRequest(int functionCode, const QByteArray& frame);
    void writeRequest(int functionCode, const QByteArray& frame);
    void refuse(int functionCode, int exceptionCode);
    void respond(int functionCode, const QByteArray& data);
    void respondRegisters(int functionCode, int byteCount, const std::vector<qint16>& values);

    int m_transmissionMode = 0;
    bool m_masterMode = false;
    int m_slaveAddress = 0;
    int m_errorCode = kNoError;
    QByteArray m_request;                                    // binary frame without check value
    QByteArray m_wire;                                       // the same as it goes out
    QByteArray m_received = QByteArray(kReceiveBytes, '\0'); // the last accepted reply, from the first byte on
    int m_recvSize = 0;
    std::array<qint16, kValues> m_registers{};
    std::array<float, kValues> m_floats{};
    std::array<quint8, kValues> m_bytes{};
};
