#pragma once

#include "ScriptedController.h"
#include "SoundController.h"
#include "TestMachine.h"
#include "clsLibrary.h"
#include "clsLog.h"
#include "uclComm.h"

#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

// COM1 on a scripted controller that knows what it holds at FBC0 and FBC8. A clock that stands still lets a request
// time out only when the controller stays silent.
class DetectionFixture : public ::testing::Test
{
protected:
    // What the controller does when it is asked, beside answering with a text.
    static constexpr const char* kSilent = "#silent";
    static constexpr const char* kDamaged = "#damaged";
    static constexpr const char* kException = "#exception";
    static constexpr const char* kForeign = "#foreign";

    DetectionFixture()
        : library(box.context), ports{QProcessEnvironment()}, errorLog(box.machine), traceLog(box.machine)
    {
        for (auto [log, name] : {std::pair(&errorLog, "Err.log"), std::pair(&traceLog, "Trc.log")}) {
            log->setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
            log->setLogFileName(QLatin1String(name));
        }
    }

    void plug(ScriptedController::Answer answer)
    {
        controller = std::make_unique<ScriptedController>(std::move(answer));
        ports.assign(1, controller->device());
    }

    void plug(const QByteArray& first, const QByteArray& second = kSilent)
    {
        plug([this, first, second](const QByteArray& request) {
            return answer(request, soundController::asksFor(request, "0000FBC8") ? second : first);
        });
    }

    QByteArray answer(const QByteArray& request, const QByteArray& how)
    {
        // An exception is shorter than the reply that is awaited.
        if (how == kSilent || how == kException)
            QTimer::singleShot(0, &pulse, [this] { passTime(); });
        if (how == kSilent)
            return {};
        if (how == kException)
            return soundController::rtu(request.left(1) + QByteArray::fromHex("C202"));
        if (how == kForeign)
            return soundController::rtu(request.left(1) + QByteArray::fromHex("030F") + QByteArray(15, 'K'));
        QByteArray reply = soundController::rtu(request.left(2) + QByteArray::fromHex("000E") +
                                                (how == kDamaged ? QByteArray(14, 'K') : how));
        if (how == kDamaged)
            reply.back() = static_cast<char>(~reply.back());
        return reply;
    }

    // Until the link gives the request up. In steps, so that bytes that are on the way are taken first.
    void passTime()
    {
        if (++steps % 10 == 0)
            box.clock.advance(7000);
        else
            QTimer::singleShot(0, &pulse, [this] { passTime(); });
    }

    QByteArray settingsFile() const { return box.content(kSettings); }

    void writeSettings(const QByteArray& text)
    {
        library.getIniFilePath(QStringLiteral("Main"));
        ASSERT_TRUE(box.put(kSettings, text));
    }

    inline static const QString kSettings = QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini");

    TestMachine box;
    clsLibrary library;
    platform::ComPorts ports;
    clsLog errorLog;
    clsLog traceLog;
    std::unique_ptr<ScriptedController> controller;
    QObject pulse;
    int steps = 0;
};
