#include "ProgramContext.h"

#include "FileLocations.h"
#include "clsINI.h"

#include <QDir>

namespace {

// Definition, language and help files, which a user's program folder is filled from.
QString installedData(const QString& executableFolder)
{
    return QDir::cleanPath(executableFolder + QStringLiteral("/" VORLANT_DATA_FROM_PROGRAMS "/vorlant"));
}

} // namespace

ProgramContext::ProgramContext(const QString& executableFolder, const QProcessEnvironment& environment,
                               const platform::SystemColors& colors)
    : ProgramContext(
          platform::PathMap(),
          programFolders(platform::PathMap(), executableFolder, installedData(executableFolder), environment),
          environment, colors)
{}

ProgramContext::ProgramContext(const platform::PathMap& paths, const ProgramFolders& folders,
                               const QProcessEnvironment& environment, const platform::SystemColors& colors)
    : ProgramContext(paths, folders.folders, environment, colors)
{
    m_folderNotices = folders.notices;
}

ProgramContext::ProgramContext(const platform::PathMap& paths, const platform::Folders& folders,
                               const QProcessEnvironment& environment, const platform::SystemColors& colors)
    : m_machine(platform::CodePage::fromEnvironment(), paths, folders, m_clock, colors), m_errorLog(m_machine),
      m_traceLog(m_machine), m_eventLog(m_machine), m_context(m_machine), m_library(m_context),
      m_ports(environment, [this](const QString& key) { return portSetting(key); })
{
    openLogs();
    m_library.Logs(m_errorLog, m_traceLog);
    m_context.eventLog = m_eventLog;
    m_context.settings = m_settings;
    loadLanguageFile();
    m_settings.init(&m_library);
    m_settings.load();
}

void ProgramContext::loadLanguageFile()
{
    clsINI ini = mainSettings(m_context);
    m_context.languageFile =
        ini.GetIniData(QStringLiteral("Setting"), QStringLiteral("LanguageFile"), m_library.getDefLangFile());
}

void ProgramContext::openLogs()
{
    if (m_machine.folders.isPackaged()) { // what belongs to the package takes no logs
        for (clsLog* log : {&m_traceLog, &m_errorLog, &m_eventLog})
            log->setLogSwitch(false);
        return;
    }
    // Without the folder the logs are silent.
    QDir().mkpath(m_machine.paths.toMachine(m_machine.folders.logs()));
    openLog(m_traceLog, QStringLiteral("Trc.log"));
    openLog(m_errorLog, QStringLiteral("Err.log"));
    openLog(m_eventLog, QStringLiteral(".log"));
}

void ProgramContext::openLog(clsLog& log, const QString& ending)
{
    log.setLogPath(m_machine.folders.logs());
    log.setLogFileName(m_machine.folders.baseName() + ending);
}

QString ProgramContext::portSetting(const QString& key)
{
    clsINI ini = mainSettings(m_context);
    return ini.GetIniData(kPortsSection, key, QString(), true);
}

QString ProgramContext::settingsFile() const
{
    return m_machine.paths.toMachine(m_library.getIniFilePath(QStringLiteral("Main")) + u'\\' +
                                     m_library.getIniFileName(QString()));
}

QString ProgramContext::definitionFile(const QString& name) const
{
    return m_machine.paths.toMachine(m_library.getIniFilePath(QString()) + u'\\' + name);
}
