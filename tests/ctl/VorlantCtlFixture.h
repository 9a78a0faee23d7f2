#pragma once

#include "ScriptedController.h"
#include "SoundController.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

// The program itself, in a scratch program folder, with a scripted controller on a pseudo-terminal.
class VorlantCtl : public ::testing::Test
{
protected:
    static constexpr int kGenerousMs = 60000;

    VorlantCtl()
    {
        EXPECT_TRUE(soundController::install(path("program"), path("config")));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("VORLANT_PROGRAM_DIR"), path("program"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path("config"));
        environment.insert(QStringLiteral("HOME"), dir.path());
        process.setProcessEnvironment(environment);
    }

    QString path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }

    void plug(ScriptedController::Answer answer)
    {
        controller = std::make_unique<ScriptedController>(std::move(answer));
    }

    // Runs to the end; returns the exit status.
    int run(const QStringList& arguments)
    {
        QSignalSpy finished(&process, &QProcess::finished);
        process.start(QStringLiteral(VORLANT_CTL), arguments);
        if (finished.isEmpty() && !finished.wait(kGenerousMs))
            return -1;
        output = process.readAllStandardOutput();
        errors = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }

    int readWith(const QStringList& more = {})
    {
        return run(QStringList{QStringLiteral("--port"), controller->device(), QStringLiteral("--model"),
                               QStringLiteral("KX410"), QStringLiteral("read")} +
                   more);
    }

    void expectOneLineAbout(const char* text)
    {
        EXPECT_TRUE(errors.contains(text)) << errors.toStdString();
        EXPECT_EQ(errors.count('\n'), 1) << errors.toStdString();
        EXPECT_TRUE(output.isEmpty()) << output.toStdString();
    }

    QTemporaryDir dir;
    QProcess process;
    std::unique_ptr<ScriptedController> controller;
    QByteArray output;
    QByteArray errors;
};
