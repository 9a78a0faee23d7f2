#pragma once

#include "CommandResult.h"
#include "ParameterFile.h"

#include <QString>
#include <QStringList>

class ProgramContext;
class clsKX;

// A parameter file that the command line names. The program is kept by reference.
class SetFile
{
public:
    SetFile(ProgramContext& program, const QString& fileName); // a path of this machine

    // Whether it is a parameter file, and of a model that the option --model (may be empty) does not contradict.
    CommandResult open(const QString& wantedModel);
    QString modelString() const { return m_modelString; }
    QString name() const { return m_name; }

    // Gives every item that is read from the controller the value of the file, or none.
    CommandResult show(clsKX& kx) const;
    // Gives every item that is written to the controller the value of the file; the memory images stay what the
    // controller sent. Fails when the file lacks a value, or has one that no controller can hold. To be called after a
    // read.
    CommandResult replaceWritten(clsKX& kx) const;

    // Writes the values that the controller sent.
    CommandResult save(const clsKX& kx) const;

private:
    using Values = QVector<QPair<QString, QString>>; // stored values by tag

    CommandResult badFile(const QString& error) const;
    CommandResult values(const clsKX& kx, Values& values) const;
    static void apply(clsKX& kx, const Values& values);
    static QStringList unfitFor(const clsKX& kx, const Values& values);

    ProgramContext& m_program;
    QString m_name;        // as given
    QString m_desktopPath; // the same as the program's own path text
    QString m_modelString;
};
