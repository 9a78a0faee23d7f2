#pragma once

#include "ComPorts.h"
#include "GridModel.h"
#include "IdleClock.h"
#include "RealModel.h"
#include "RecordingShell.h"
#include "SimulatorLine.h"
#include "TransferEngine.h"
#include "clsKX.h"
#include "clsLog.h"
#include "uclComm.h"
#include "vaSpread.h"

#include <QStringList>

#include <random>
#include <vector>

// What became of the cycles.
struct SoakResult
{
    int cycles = 0;
    int cleanReads = 0;       // walked to the end, nothing given up
    int cleanWrites = 0;      // walked to the end, nothing failed, nothing read back otherwise
    int reportedFailures = 0; // transfers that reported something that did not succeed
    int repetitions = 0;      // requests without a valid reply
    QStringList wrong;        // values that counted as the controller's and never were: must stay empty
};

// A real model and its simulated controller at the two ends of a pseudo-terminal. Every cycle draws faults, then reads,
// and writes with values of its own; what the program holds for read or written afterwards is compared with what the
// controller held meanwhile, and the grid is painted. The clock runs only while the line is quiet. The same number
// gives the same run.
class Soak
{
public:
    // mode: 0 RTU, 1 ASCII.
    Soak(int mode, unsigned seed, SoakResult& result);

    void cycle();
    // Without faults: everything is read and must be what the controller holds.
    void finish();
    qint64 lineSeconds() const; // on the line's clock

private:
    using Values = QHash<QString, QString>; // stored values by tag
    // What the controller holds at one time.
    struct Held
    {
        Values values;
        QHash<QString, QByteArray> images; // by section
    };

    void drawFaults();
    void advance(int seconds);
    void snapshot();
    Held held();
    void read();
    void write();
    void changeSome();
    QString drawnValue(const clsData& item);
    void noteRead(const Values* shown); // null: all items were shown anew
    void noteWrite(const Values& sent, bool all);
    bool wasHeld(const QString& tag, const QString& value) const;
    void compareKnown(const Values* shown);
    void noteWrong(const QString& what);
    int pick(int first, int last) { return std::uniform_int_distribution<int>(first, last)(m_random); }

    SoakResult& m_result;
    std::mt19937 m_random;
    RealModel m_program;
    RealModel m_far; // the controller's own, and the witness's
    RecordingShell m_shell;
    ControllerState m_state;
    platform::GridModel m_grid;
    platform::vaSpread m_view;
    clsLog m_trace{m_program.box.machine};
    platform::ComPorts m_ports{QProcessEnvironment()};
    clsKX m_kx;
    SimulatedController m_controller;
    SimulatorLine m_line;
    uclComm m_link;
    TransferEngine m_engine;
    IdleClock m_idle;
    QDateTime m_start;
    QString m_faults;         // of this cycle
    QByteArray m_held;        // the controller's state last seen
    std::vector<Held> m_past; // what the controller held since the transfer began
    platform::GridModel m_witnessGrid;
    clsKX m_witness; // the same model, filled from the controller's state without a line between
};
