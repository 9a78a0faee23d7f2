#pragma once

#include "OutputFormat.h"
#include "ParameterClass.h"
#include "ScanPlan.h"
#include "SlaveRange.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// What vorlantctl does in one run.
enum class Command {
    Help,
    Version,
    Models,
    Ports,
    CheckDefinitions,
    Detect,
    Scan,
    Read,
    Show,
    Get,
    Set,
    Write,
    Changes,
    Compare,
    History,
    Backups
};

// What the user asked for. An option that was left out has no value: then the main settings file decides.
struct CommandLine
{
    Command command = Command::Help;
    QStringList words; // what stands behind the command: files, models, tags, or TAG=VALUE
    QString port;      // a device, or COMn
    QString speed;
    QString chara;
    std::optional<int> transmissionMode; // 0 RTU, 1 ASCII
    std::optional<int> slave;            // 1 to 247
    QString model;                       // a code of the catalogue, or a whole model string
    std::optional<int> timeoutMs;        // 50 to 3600000
    bool quiet = false;
    bool stats = false;            // how the requests have ended, on standard error
    bool dryRun = false;           // `write` and `set` print what they would change, and send nothing
    QList<ParameterClass> classes; // that `write` and `set` send; empty: all
    bool readOnly = false;         // nothing is written to a controller
    bool withoutBackup =
        false;          // `write` and `set` do without a backup, and without the history where it cannot be written
    QString outputFile; // empty: standard output
    OutputFormat format = OutputFormat::Table;
    scanplan::Choice scanChoice; // of `scan`; what was left out is empty
    int firstSlave = slaverange::kFirst;
    int lastSlave = slaverange::kLastOfControllers;
    bool onlyFirst = false;       // `scan` ends with the first controller
    bool asParameterFile = false; // `read` writes a parameter file; outputFile is its name then

    bool sends(ParameterClass kind) const { return classes.isEmpty() || classes.contains(kind); }
};

// A command line as it was read: the line counts only without an error.
struct ParsedCommandLine
{
    CommandLine line;
    QString error; // one line; empty when the command line makes sense
};

// arguments: without the program's name.
ParsedCommandLine parseCommandLine(const QStringList& arguments);

QString helpText();
