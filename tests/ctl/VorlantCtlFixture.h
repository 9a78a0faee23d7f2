#pragma once

#include "ScriptedController.h"
#include "SoundController.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <grp.h>
#include <memory>
#include <unistd.h>
#include <vector>

// The program itself in a scratch folder, which is its working folder too, with a model of three parameters and a
// controller on a pseudo-terminal.
class VorlantCtl : public ::testing::Test
{
protected:
    static constexpr int kGenerousMs = 60000;
    enum Status { Done = 0, Differ = 1, Usage = 2, NoAnswer = 3, WrongModel = 4, BadFile = 5, Refused = 6 };

    VorlantCtl()
    {
        EXPECT_TRUE(soundController::install(path("program"), path("config")));
        setVariable("VORLANT_PROGRAM_DIR", path("program"));
        setVariable("XDG_CONFIG_HOME", path("config"));
        setVariable("XDG_STATE_HOME", path("state"));
        setVariable("HOME", dir.path());
        process.setWorkingDirectory(dir.path());
    }

    void setVariable(const QString& name, const QString& value)
    {
        environment.insert(name, value);
        process.setProcessEnvironment(environment);
    }

    QString path(const QString& name) const { return dir.filePath(name); }
    QByteArray contentOf(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QString& name, const QByteArray& bytes)
    {
        ASSERT_TRUE(soundController::writeFile(path(name), bytes));
    }

    void plug(const ScriptedController::Answer& answer) { controller = ScriptedController::make(answer); }

    // The controller of the model in soundController.
    void plugSound(const QByteArray& code = soundController::kModel)
    {
        plug([code](const QByteArray& request) { return soundController::reply(request.left(8), code); });
    }

    // From here on the program runs as a user without rights over other people's files, as a copy that this user
    // reaches.
    void becomePlainUser()
    {
        if (geteuid() != 0)
            return;
        ASSERT_TRUE(QFile::copy(executable, path("vorlantctl")));
        executable = path("vorlantctl");
        ASSERT_EQ(QProcess::execute("chown", {"-R", "nobody", dir.path(), controller->device()}), 0);
        process.setChildProcessModifier([] {
            constexpr uid_t kNobody = 65534;
            if (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0)
                _exit(126);
        });
    }

    // Runs to the end, with the controller's port and the model; returns the exit status. The words stand between
    // blanks, or between "|" where there is one.
    int run(const QString& line)
    {
        QStringList words = line.split(line.contains('|') ? '|' : ' ');
        if (!model.isEmpty())
            words = QStringList{"--model", model} + words;
        if (controller)
            words = QStringList{"--port", controller->device()} + words;
        QSignalSpy finished(&process, &QProcess::finished);
        process.start(executable, words);
        if (!process.waitForStarted(kGenerousMs) || (finished.isEmpty() && !finished.wait(kGenerousMs)))
            return -1;
        output = process.readAllStandardOutput();
        errors = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }

    // The run prints exactly this, and nothing as an error: no progress when nobody watches.
    void expectPrints(const QString& line, const std::string& printed, int status = Done)
    {
        EXPECT_EQ(run(line), status) << qPrintable(line);
        EXPECT_EQ(output.toStdString(), printed) << qPrintable(line);
        EXPECT_EQ(errors.toStdString(), "") << qPrintable(line);
    }

    // The run prints one line that holds the text, as an error.
    void expectFails(const QString& line, int status, const QString& text)
    {
        EXPECT_EQ(run(line), status) << qPrintable(line);
        EXPECT_TRUE(errors.contains(text.toUtf8())) << errors.toStdString() << "\nwanted: " << qPrintable(text);
        EXPECT_EQ(errors.count('\n'), 1) << errors.toStdString();
        EXPECT_EQ(output.toStdString(), "") << qPrintable(line);
    }

    QTemporaryDir dir;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QProcess process;
    QString executable = QStringLiteral(VORLANT_CTL);
    std::unique_ptr<ScriptedController> controller;
    QString model = "KX410";
    QByteArray output;
    QByteArray errors;
};
