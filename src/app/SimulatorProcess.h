#pragma once

#include "Clock.h"

#include <QObject>
#include <QProcess>
#include <QString>

#include <memory>

// Runs vorlant-sim on a pseudo-terminal of its own. It ends with this process, whatever ends that.
//
// start answers with one signal: ready, or failed. After ready, ended comes when the simulator ends by itself.
class SimulatorProcess : public QObject
{
    Q_OBJECT

public:
    static constexpr int kAnswerMs = 5000;

    // program: the executable, machine path. The clock must outlive the object.
    SimulatorProcess(const QString& program, platform::Clock& clock, QObject* parent = nullptr);
    ~SimulatorProcess() override;

    // The simulator of the installation that this program is of; where it ought to be when it is not there.
    static QString installed();

    // arguments: options of vorlant-sim. A start takes the place of the one before.
    void start(const QStringList& arguments);
    void stop(); // without a signal
    const QString& program() const { return m_program; }
    void setProgram(const QString& program) { m_program = program; } // for the next start
    bool isReady() const { return !m_device.isEmpty(); }
    const QString& device() const { return m_device; } // what a client opens; empty unless it is ready

Q_SIGNALS:
    void ready();
    // reason: in the words of the machine or the simulator; empty: no answer in kAnswerMs.
    void failed(const QString& reason);
    void ended();

private:
    void readAnswer();
    void onEnded();
    void fail(const QString& reason);

    QString m_program;
    QString m_device;
    std::unique_ptr<platform::Timer> m_timer;
    std::unique_ptr<QProcess> m_process; // empty while none is wanted
};
