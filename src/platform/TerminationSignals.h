#pragma once

#include <QObject>
#include <memory>

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

} // namespace platform
