#pragma once

#include "Clock.h"
#include "ComPorts.h"
#include "Context.h"
#include "Machine.h"
#include "ProgramFolders.h"
#include "clsCfg.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <QProcessEnvironment>
#include <QString>

// What every program stands on: machine, folders, the three logs, library, settings and COM names. Made
// once by the entry procedure, before anything else, and handed down by reference; it outlives everything else.
class ProgramContext
{
public:
    // For a running program: the folders follow from the executable's folder and the environment.
    ProgramContext(const QString& executableFolder, const QProcessEnvironment& environment,
                   const platform::SystemColors& colors);
    // With folders given, for tests.
    ProgramContext(const platform::PathMap& paths, const platform::Folders& folders,
                   const QProcessEnvironment& environment, const platform::SystemColors& colors);
    ProgramContext(const ProgramContext&) = delete;
    ProgramContext& operator=(const ProgramContext&) = delete;

    platform::Clock& clock() { return m_clock; }
    platform::Machine& machine() { return m_machine; }
    platform::ComPorts& ports() { return m_ports; }
    Context& context() { return m_context; }
    clsLibrary& library() { return m_library; }
    clsCfg& settings() { return m_settings; }
    clsLog& errorLog() { return m_errorLog; }
    clsLog& traceLog() { return m_traceLog; }
    clsLog& eventLog() { return m_eventLog; }

    // What the person at the program has to know about its folders: show it once, when the program starts.
    const FolderNotices& folderNotices() const { return m_folderNotices; }

    // Reads again which language file is in use; the default is known once the installed ones have been listed.
    void loadLanguageFile();

    // Where a person finds them, as machine paths.
    QString settingsFile() const;
    QString definitionFile(const QString& name) const;

private:
    ProgramContext(const platform::PathMap& paths, const ProgramFolders& folders,
                   const QProcessEnvironment& environment, const platform::SystemColors& colors);
    void openLogs();
    void openLog(clsLog& log, const QString& ending);
    QString portSetting(const QString& key);

    platform::SystemClock m_clock;
    platform::Machine m_machine;
    clsLog m_errorLog;
    clsLog m_traceLog;
    clsLog m_eventLog;
    clsCfg m_settings;
    Context m_context;
    clsLibrary m_library;
    platform::ComPorts m_ports;
    FolderNotices m_folderNotices;
};
