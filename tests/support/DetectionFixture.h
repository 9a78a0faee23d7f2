#pragma once

#include "FileLocations.h"
#include "IdleClock.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "TestMachine.h"
#include "clsINI.h"
#include "clsLibrary.h"
#include "uclComm.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

// COM1 on a scripted controller that knows what it holds at FBC0 and FBC8. A clock that stands still lets a request
// time out only when the controller stays silent.
class DetectionFixture : public ::testing::Test
{
protected:
    static constexpr const char* kSilent = "#silent";

    DetectionFixture()
        : library(box.context), ports(
                                    QProcessEnvironment(), [this](const QString& key) { return portSetting(key); },
                                    [this] { return machine; }, byId.path())
    {}

    void plug(ScriptedController::Answer answer)
    {
        controller = ScriptedController::make(answer);
        ports.assign(1, controller->device());
    }

    void plug(const QByteArray& first, const QByteArray& second = kSilent)
    {
        plug([this, first, second](const QByteArray& request) {
            return answer(request, soundController::asksFor(request, "0000FBC8") ? second : first);
        });
    }

    // how: #silent, #damaged, #exception, #foreign (another function), else the bytes of the reply.
    QByteArray answer(const QByteArray& request, const QByteArray& how)
    {
        idle.reset();
        if (how == kSilent || how == "#exception") // which is shorter than the reply that is awaited
            idle.emplace(box.clock, 7000);
        const QByteArray slave = request.left(1);
        if (how == kSilent)
            return {};
        if (how == "#exception")
            return soundController::rtu(slave + QByteArray::fromHex("C202"));
        if (how == "#foreign")
            return soundController::rtu(slave + QByteArray::fromHex("030F") + QByteArray(15, 'K'));
        const bool isDamaged = how == "#damaged";
        QByteArray reply =
            soundController::rtu(slave + QByteArray::fromHex("42000E") + (isDamaged ? QByteArray(14, 'K') : how));
        if (isDamaged)
            reply.back() = static_cast<char>(~reply.back());
        return reply;
    }

    QString portSetting(const QString& key)
    {
        return mainSettings(box.context).GetIniData(kPortsSection, key, QString(), true);
    }

    void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
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
    QTemporaryDir byId;                 // links by lasting names
    QVector<platform::ComPort> machine; // what is plugged in, without what plug puts in
    platform::ComPorts ports;
    std::unique_ptr<ScriptedController> controller;
    std::optional<IdleClock> idle;
    QObject pulse;
};
