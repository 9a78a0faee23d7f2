#pragma once

#include "PortLock.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <fcntl.h>
#include <functional>
#include <memory>
#include <pty.h>
#include <stdexcept>
#include <termios.h>
#include <unistd.h>
#include <vector>

// The far end of a serial line: a pseudo-terminal whose master side is answered by a function of the test. The function
// gets every piece of bytes that arrives (a whole request, since the program writes one at a time) and returns the
// reply, empty for silence. The line hangs up when the object ends or unplug() is called.
class ScriptedController
{
public:
    using Answer = std::function<QByteArray(const QByteArray& request)>;

    explicit ScriptedController(Answer answer) : m_answer(std::move(answer))
    {
        char name[128] = {};
        termios raw{};
        cfmakeraw(&raw);
        raw.c_cc[VSTART] = 0x11; // XON and XOFF, for a line that uses them
        raw.c_cc[VSTOP] = 0x13;
        if (openpty(&m_master, &m_slave, name, &raw, nullptr) != 0)
            throw std::runtime_error("no pseudo-terminal");
        // A program that a test starts must not hold the line: then it could not be unplugged.
        for (const int fd : {m_master, m_slave})
            fcntl(fd, F_SETFD, FD_CLOEXEC);
        m_device = QString::fromLocal8Bit(name);
        m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { serve(); });
    }

    // A terminal that hung up may get its number again while a program that has it open, or was killed, still holds the
    // lock of the number: such a one is passed over.
    static std::unique_ptr<ScriptedController> make(const Answer& answer)
    {
        std::vector<std::unique_ptr<ScriptedController>> passed;
        auto controller = std::make_unique<ScriptedController>(answer);
        while (platform::PortLock::of(controller->device()).state != platform::PortLock::State::None) {
            passed.push_back(std::move(controller));
            controller = std::make_unique<ScriptedController>(answer);
        }
        return controller;
    }

    ~ScriptedController() { unplug(); }
    ScriptedController(const ScriptedController&) = delete;
    ScriptedController& operator=(const ScriptedController&) = delete;

    QString device() const { return m_device; }
    int requests() const { return m_requests; }

    void unplug()
    {
        if (m_master < 0)
            return;
        m_notifier.reset();
        close(m_slave);
        close(m_master);
        m_master = -1;
    }

    // Bytes that nobody asked for.
    void send(const QByteArray& bytes)
    {
        if (m_master < 0 || write(m_master, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
            throw std::runtime_error("the line is gone");
    }

private:
    void serve()
    {
        char buffer[1024];
        const ssize_t count = read(m_master, buffer, sizeof buffer);
        if (count <= 0)
            return;
        ++m_requests;
        const QByteArray reply = m_answer(QByteArray(buffer, static_cast<int>(count)));
        if (m_master >= 0 && !reply.isEmpty())
            send(reply);
    }

    Answer m_answer;
    QString m_device;
    int m_master = -1;
    int m_slave = -1;
    int m_requests = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
