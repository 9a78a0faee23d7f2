#pragma once

#include "CommandResult.h"
#include "ControlLink.h"
#include "ControllerScan.h"
#include "OutputFormat.h"
#include "ProgressView.h"
#include "Result.h"

#include <QTextStream>

class ProgramContext;

// `scan`: which controllers answer on the line, and with which settings. A table is printed row by row, as they are
// found; other forms and files are written at the end. One object, one run.
class ScanCommand : public QObject
{
    Q_OBJECT

public:
    // All kept by reference. errors gets the ports that are skipped.
    ScanCommand(ProgramContext& program, const CommandLine& line, ProgressView& progress, QTextStream& errors);

    // Returns when all was asked, dispatching events while it waits.
    CommandResult run();
    // Ends a run that is under way.
    void interrupt();

private:
    bool isPrintedAtOnce() const;
    QList<int> allPorts() const;
    ControllerScan::Plan plan(const QList<int>& ports) const;
    void show(const LineSettings& line, int slave, int done, int total);
    void note(const ScanFind& find);
    void print(const QStringList& fields);
    void notePort(const QString& reason);
    CommandResult result(bool isWhole) const;

    ProgramContext& m_program;
    const CommandLine m_commandLine;
    ControlLink m_line; // without a port of the command line where all are meant
    ProgressView& m_progress;
    QTextStream& m_errors;
    ControllerScan m_scan;
    PrintedRows m_rows;
    QList<int> m_widths;
    bool m_isOfAllPorts = false;
    int m_answering = 0; // slaves
    QString m_failure;   // of the last port
    platform::Result<> m_printed;
};
