#pragma once

#include <QObject>
#include <memory>

class QProcess;
class QSocketNotifier;

namespace platform {

// Turns the signals that ask a process to end (SIGINT, SIGTERM, SIGHUP) into an event: requested() is emitted from the
// event loop, where everything is allowed. One object at a time; the former behaviour comes back with its destruction.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void requested();

private:
    void onSignal();

    std::unique_ptr<QSocketNotifier> m_notifier;
};

// Has the process end as soon as this one does, whatever ends it: by SIGTERM. Call before the process is started, from
// the thread that lives as long as this process.
void endWithThisProcess(QProcess& process);

} // namespace platform
