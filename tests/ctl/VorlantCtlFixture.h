#pragma once

#include "ChildProcess.h"
#include "ScriptedController.h"
#include "SoundController.h"

#include <QDirIterator>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <unistd.h>

inline QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(u' ');
}

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

    QByteArray contentOf(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void plug(ScriptedController::Answer answer)
    {
        controller = std::make_unique<ScriptedController>(std::move(answer));
    }

    // From here on the program runs as a user without rights over other people's files: a copy of it, because that user
    // may not reach the folder that it was built in. False when it cannot.
    bool becomePlainUser()
    {
        if (geteuid() != 0)
            return true;
        bool given =
            QFile::copy(executable, path("vorlantctl")) && chown(qPrintable(dir.path()), kOtherUser, kOtherUser) == 0;
        executable = path("vorlantctl");
        process.setWorkingDirectory(dir.path());
        QDirIterator all(dir.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext())
            given = chown(qPrintable(all.next()), kOtherUser, kOtherUser) == 0 && given;
        if (controller)
            given = chown(qPrintable(controller->device()), kOtherUser, kOtherUser) == 0 && given;
        process.setChildProcessModifier([] {
            if (!becomeOtherUser())
                _exit(126);
        });
        return given && run(words("--version")) == 0;
    }

    // Runs to the end; returns the exit status, -1 for a program that does not start or does not end.
    int run(const QStringList& arguments)
    {
        QSignalSpy finished(&process, &QProcess::finished);
        process.start(executable, arguments);
        if (!process.waitForStarted(kGenerousMs) || (finished.isEmpty() && !finished.wait(kGenerousMs)))
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
    QString executable = QStringLiteral(VORLANT_CTL);
    QProcess process;
    std::unique_ptr<ScriptedController> controller;
    QByteArray output;
    QByteArray errors;
};
