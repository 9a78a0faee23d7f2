#pragma once

#include "ProgramContext.h"
#include "SimulatedController.h"
#include "SystemColors.h"
#include "VorlantCtlFixture.h"

#include <QRegularExpression>
#include <optional>

// The program itself with the shipped definitions, and one of their controllers on a pseudo-terminal.
class SimulatedCtl : public VorlantCtl
{
protected:
    // What a test answers in the controller's place; nothing: the controller answers.
    using Instead = std::function<std::optional<QByteArray>(const QByteArray& request)>;

    SimulatedCtl()
    {
        QFile::remove(path("config/Vorlan/Vorlant.ini"));
        const QDir shipped(QStringLiteral(VORLANT_DATA_DIR "/ini"));
        const QStringList names = shipped.entryList(QDir::Files);
        for (const QString& name : names)
            EXPECT_TRUE(QFile::copy(shipped.filePath(name), path("program/ini/") + name)) << qPrintable(name);
        program = std::make_unique<ProgramContext>(path("program"), process.processEnvironment(), colors);
        program->context().translates = false;
    }

    std::unique_ptr<SimulatedController> makeModel(const QString& code)
    {
        ModelCatalogue catalogue(program->library());
        catalogue.ensureBuiltIn();
        return std::make_unique<SimulatedController>(program->library(), catalogue.numberOf(code),
                                                     code + QStringLiteral("00000-10A"), 1, 0);
    }

    void plugModel(const QString& code, const Instead& instead = {})
    {
        model = code;
        simulated = makeModel(code);
        plug([this, instead](const QByteArray& request) {
            const std::optional<QByteArray> other = instead ? instead(request) : std::nullopt;
            return other ? *other : simulated->answer(request);
        });
    }

    // Options and command of a run with the controller.
    int runWith(const QStringList& command)
    {
        return run(QStringList{QStringLiteral("--port"), controller->device(), QStringLiteral("--model"), model} +
                   command);
    }

    // The set that the controller holds, as a parameter file.
    QString savedSet(const char* name)
    {
        const QString file = path(name);
        EXPECT_EQ(runWith({QStringLiteral("read"), QStringLiteral("--as"), QStringLiteral("set"), QStringLiteral("-o"),
                           file}),
                  0)
            << errors.toStdString();
        return file;
    }

    // Replaces the line of one tag of a parameter file.
    static void changeValue(const QString& file, const QByteArray& tag, const QByteArray& value)
    {
        changeText(file, u'^' + tag + QStringLiteral("=[^\r\n]*"), tag + '=' + value);
    }

    static void changeText(const QString& file, const QString& pattern, const QByteArray& to)
    {
        QFile set(file);
        ASSERT_TRUE(set.open(QIODevice::ReadWrite));
        QString text = QString::fromLatin1(set.readAll());
        const QString before = text;
        text.replace(QRegularExpression(pattern, QRegularExpression::MultilineOption), QString::fromLatin1(to));
        ASSERT_NE(text, before) << to.data();
        ASSERT_TRUE(set.resize(0) && set.seek(0) && set.write(text.toLatin1()) == text.size());
    }

    // Lines of the controller's memory that are not the same as before. Commands that a write always gives are left
    // out.
    QByteArrayList changedMemory(const QByteArray& before) const
    {
        const QByteArrayList old = before.split('\n');
        QByteArrayList changed;
        for (const QByteArray& entry : simulated->state().split('\n')) {
            if (!old.contains(entry) && !entry.startsWith("COIL 16 ") && !entry.startsWith("REG 40010 "))
                changed << entry;
        }
        return changed;
    }

    static bool isWrite(const QByteArray& request)
    {
        const int code = request.size() > 2 ? static_cast<quint8>(request[1]) : 0;
        return code == 5 || code == 6 || (code == 66 && request[2] != 0);
    }

    platform::SystemColors colors;
    std::unique_ptr<ProgramContext> program;
    std::unique_ptr<SimulatedController> simulated;
    QString model;
};
