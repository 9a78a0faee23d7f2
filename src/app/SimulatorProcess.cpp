#include "SimulatorProcess.h"

#include "TerminationSignals.h"

#include <QCoreApplication>
#include <QStandardPaths>

SimulatorProcess::SimulatorProcess(const QString& program, platform::Clock& clock, QObject* parent)
    : QObject(parent), m_program(program), m_timer(clock.makeTimer())
{
    connect(m_timer.get(), &platform::Timer::timeout, this, [this] { fail({}); });
}

SimulatorProcess::~SimulatorProcess()
{
    stop();
}

// Beside this program, or where the build has it.
QString SimulatorProcess::installed()
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString name = QStringLiteral("vorlant-sim");
    const QString found = QStandardPaths::findExecutable(name, {folder, folder + QStringLiteral("/../sim")});
    return found.isEmpty() ? folder + u'/' + name : found;
}

void SimulatorProcess::start(const QStringList& arguments)
{
    stop();
    m_process = std::make_unique<QProcess>(this);
    platform::endWithThisProcess(*m_process);
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &SimulatorProcess::readAnswer);
    // Queued: the process is not destroyed by its own signal.
    connect(m_process.get(), &QProcess::finished, this, &SimulatorProcess::onEnded, Qt::QueuedConnection);
    connect(
        m_process.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart && m_process != nullptr)
                fail(m_process->errorString());
        },
        Qt::QueuedConnection);
    m_timer->start(kAnswerMs);
    m_process->start(m_program, arguments, QIODevice::ReadOnly);
}

// What it says afterwards is not waited for.
void SimulatorProcess::stop()
{
    m_timer->stop();
    m_device.clear();
    if (m_process == nullptr)
        return;
    m_process->disconnect(this);
    m_process->kill(); // it keeps nothing
    m_process->waitForFinished();
    m_process.reset();
}

// Its first line is "ready" and the device.
void SimulatorProcess::readAnswer()
{
    if (isReady() || !m_process->canReadLine())
        return;
    m_device = QString::fromLocal8Bit(m_process->readLine()).trimmed().section(u' ', 1);
    m_timer->stop();
    Q_EMIT ready();
}

void SimulatorProcess::onEnded()
{
    if (m_process == nullptr || m_process->state() != QProcess::NotRunning)
        return; // of one that was stopped meanwhile
    const bool wasReady = isReady();
    const QString lastWords = QString::fromLocal8Bit(m_process->readAllStandardError()).trimmed();
    if (!wasReady) {
        fail(lastWords.isEmpty() ? m_process->errorString() : lastWords);
        return;
    }
    stop();
    Q_EMIT ended();
}

void SimulatorProcess::fail(const QString& reason)
{
    stop();
    Q_EMIT failed(reason);
}
