#pragma once

#include "ProgramContext.h"
#include "SimulatedController.h"
#include "SystemColors.h"
#include "VorlantCtlFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <optional>

// With the shipped definitions, and one of their controllers on the pseudo-terminal.
class SimulatedCtl : public VorlantCtl
{
protected:
    // What a test answers in the controller's place; nothing: the controller answers.
    using Answer = std::optional<QByteArray>;
    using Instead = std::function<Answer(const QByteArray& request)>;

    SimulatedCtl()
    {
        QFile::remove(path("config/Vorlan/Vorlant.ini"));
        const QDir shipped(QStringLiteral(VORLANT_DATA_DIR "/ini"));
        for (const QString& name : shipped.entryList(QDir::Files))
            EXPECT_TRUE(QFile::copy(shipped.filePath(name), path("program/ini/") + name)) << qPrintable(name);
        program = std::make_unique<ProgramContext>(path("program"), environment, colors);
        program->context().translates = false;
    }

    std::unique_ptr<SimulatedController> makeModel(const QString& code, const char* options = "00000-10A")
    {
        ModelCatalogue catalogue(program->library());
        catalogue.ensureBuiltIn();
        return std::make_unique<SimulatedController>(program->library(), catalogue.numberOf(code), code + options, 1,
                                                     0);
    }

    void plugModel(const char* code, const Instead& instead = {})
    {
        model = QString(code);
        simulated = makeModel(model);
        plug([this, instead](const QByteArray& request) {
            const Answer other = instead ? instead(request) : std::nullopt;
            return other ? *other : simulated->answer(request);
        });
        before = simulated->state();
    }

    // A parameter file with the set that the controller holds.
    void save(const char* file) { expectPrints(QString("read --as set -o ") + file, ""); }

    // Replaces the line of one tag of a parameter file.
    void changeValue(const char* file, const char* tag, const char* value)
    {
        changeText(file, QString("^%1=[^\r\n]*").arg(QString(tag)), QByteArray(tag) + '=' + value);
    }

    void changeText(const char* file, const QString& pattern, const QByteArray& to)
    {
        const QString old = QString::fromLatin1(contentOf(file));
        const QRegularExpression form(pattern, QRegularExpression::MultilineOption);
        const QString text = QString(old).replace(form, QString(to));
        ASSERT_NE(text, old) << to.data();
        put(file, text.toLatin1());
    }

    // Runs with --as json. Of each row these members, separated by "=", the rows by "|".
    QString printedRows(const QString& line, int status, const QString& columns)
    {
        EXPECT_EQ(run(line + (line.contains('|') ? "|--as|json" : " --as json")), status) << errors.toStdString();
        QStringList rows;
        for (const QJsonValue& row : QJsonDocument::fromJson(output).array()) {
            QStringList fields;
            for (const QString& column : columns.split(' '))
                fields << row[column].toString();
            rows << fields.join('=');
        }
        return rows.join('|');
    }

    // Lines of the controller's memory that are not the same as when it was plugged. Commands that a write always gives
    // are left out.
    std::string changedMemory() const
    {
        const QByteArrayList old = before.split('\n');
        QByteArrayList changed;
        for (const QByteArray& entry : simulated->state().split('\n')) {
            if (!old.contains(entry) && !entry.startsWith("COIL 16 ") && !entry.startsWith("REG 40010 "))
                changed << entry;
        }
        return changed.join('|').toStdString();
    }

    static bool isWrite(const QByteArray& request)
    {
        const int code = request.size() > 2 ? static_cast<quint8>(request[1]) : 0;
        return code == 5 || code == 6 || (code == 66 && request[2] != 0);
    }

    platform::SystemColors colors;
    std::unique_ptr<ProgramContext> program;
    std::unique_ptr<SimulatedController> simulated;
    QByteArray before;
};
