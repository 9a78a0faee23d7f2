#pragma once

#include "Faults.h"
#include "clsKX.h"
#include "clsModbus.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <map>

class clsLibrary;

// The controller that a model's own screen and comm file describe: memory laid out by their addresses and filled with
// their default data, the model string at FBC0. Answers function codes 1 to 6, 16, 66, 70 and 71; an address that the
// definition does not name is refused with exception 2.
class SimulatedController : public QObject
{
    Q_OBJECT

public:
    // mode: 0 RTU, 1 ASCII. number: of the model in the catalogue.
    SimulatedController(clsLibrary& library, int number, const QString& modelString, int slave, int mode,
                        QObject* parent = nullptr);

    // The whole reply on the wire to a whole request on the wire; empty when a controller would not answer. With a
    // forced exception the request is refused and not carried out.
    QByteArray answer(const QByteArray& request, int forcedException = 0);

    // As after a loss of power: the memory is what it was at the start.
    void restart() { m_values = m_atStart; }

    // Memory is changed behind the line's back, as at the front panel. Fails, with nothing changed, when the definition
    // has no such memory; findMemory only says so.
    platform::Result<> poke(quint32 address, const QByteArray& bytes);
    platform::Result<> findMemory(quint32 address, qsizetype count) const;

    bool isAscii() const { return m_modbus.TransmissionMode() == 1; }
    int itemCount() const { return static_cast<int>(m_kx.items().size()); }

    // The memory as text lines: "MEM FBC0 4B", "IREG 30001 1234", "REG 40001 1200", "COIL 1 0".
    QByteArray state() const;

private:
    struct Values
    {
        std::map<quint32, quint8> memory;
        std::map<int, qint16> inputs;   // by zero-based address, function code 4
        std::map<int, qint16> holdings; // function codes 3, 6, 16
        std::map<int, bool> coils;      // function codes 1, 5
        std::map<int, bool> discretes;  // function code 2
    };

    void layOut(const QString& modelString);
    void layImage(const clsKXAdr& image);
    void layItem(const clsData& item, const QString& modelString);
    void store(quint32 address, const QByteArray& bytes);
    void connectModbus();
    void readBits(int start, int quantity, bool& illegal, bool coils);
    void readRegisters(const std::map<int, qint16>& table, int start, int quantity, bool& illegal, bool holding);
    void userDefined(int functionCode, const QByteArray& request);
    void directMemory(const QByteArray& request);
    void floats(int functionCode, const QByteArray& request);

    clsKX m_kx;
    platform::GridModel m_grid;
    clsModbus m_modbus;
    Values m_values;
    Values m_atStart;
    std::map<int, quint32> m_floatAddress; // memory behind the n-th floating-point value
    bool m_refusing = false;
};
