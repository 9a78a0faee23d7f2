#include "ProgramFolders.h"

#include "CodePage.h"
#include "MovedFiles.h"
#include "Result.h"
#include "ShippedFiles.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

namespace {

const QString kDefinitions = QStringLiteral("/ini");
const QString kNoHome = QStringLiteral("There is no home folder, and %1 cannot be written to: %2. Set HOME, or "
                                       "XDG_CONFIG_HOME and XDG_DATA_HOME, so that settings and logs can be kept.");
const QString kNoSettings = QStringLiteral("Settings cannot be kept in %1: %2. Give yourself the right to write there, "
                                           "or name another folder with XDG_CONFIG_HOME.");
const QString kNotMoved = QStringLiteral("What earlier versions kept was not moved to %1: %2. Give yourself the "
                                         "right to write there.");
const QString kNotKept = QStringLiteral("Nothing can be kept in the home folder %1: %2. Give yourself the right to "
                                        "write there, or set HOME to a folder of your own.");

QString userFolder(const QProcessEnvironment& environment, const QString& variable, const QString& belowHome)
{
    const QString set = environment.value(variable);
    if (QDir::isAbsolutePath(set))
        return set;
    const QString home = environment.value(QStringLiteral("HOME"));
    return home.isEmpty() ? QString() : home + belowHome;
}

platform::Result<> makeWritable(const QString& folder)
{
    if (!QDir().mkpath(folder))
        return platform::Failure{qt_error_string()};
    return QFileInfo(folder).isWritable() ? platform::Result<>() : platform::Failure{qt_error_string(EACCES)};
}

// A user's own folder, filled from the installed data; these where not all could be written: they do for reading.
QString filledFolder(const QString& own, const QString& installedData, FolderNotices& notices)
{
    QDir().mkpath(own);
    const ShippedFiles files(installedData, own, platform::CodePage::fromEnvironment());
    notices = files.update();
    return notices.isEmpty() || files.isWhole() ? own : installedData;
}

// What the machine's owner set up in place of user folders; empty when it is not needed or needs no filling.
QString presetProgramFolder(const QString& executableFolder, const QProcessEnvironment& environment)
{
    const QString set = environment.value(QStringLiteral("VORLANT_PROGRAM_DIR"));
    if (!set.isEmpty())
        return QFileInfo(set).absoluteFilePath();
    const bool isBeside =
        QFileInfo(executableFolder).isWritable() && QFileInfo(executableFolder + kDefinitions).isDir();
    return isBeside ? executableFolder : QString();
}

// The folders of a user, or those of a process that has no home.
struct StateFolders
{
    QString data;
    QString settings;
    QString state;
    FolderNotices notices;

    StateFolders(const QProcessEnvironment& environment, const QString& withoutHome, bool needsData)
        : data(userFolder(environment, QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/.local/share"))),
          settings(userFolder(environment, QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/.config"))),
          state(userFolder(environment, QStringLiteral("XDG_STATE_HOME"), QStringLiteral("/.local/state")))
    {
        if (!data.isEmpty())
            data += QStringLiteral("/vorlant");
        const bool isComplete = (!data.isEmpty() || !needsData) && !settings.isEmpty();
        if (isComplete && !state.isEmpty())
            return;
        const platform::Result<> made = makeWritable(withoutHome);
        if (!made.ok()) {
            if (!isComplete)
                notices.append({kNoHome, withoutHome, made.error()});
            return;
        }
        data = data.isEmpty() ? withoutHome : data;
        settings = settings.isEmpty() ? withoutHome : settings;
        state = state.isEmpty() ? withoutHome : state;
    }
};

void moveOnce(const QString& before, const QString& now, FolderNotices& notices)
{
    const platform::Result<> moved = before == now ? platform::Result<>() : platform::moveFiles(before, now);
    if (!moved.ok())
        notices.append({kNotMoved, now, moved.error()});
}

// Earlier versions kept the logs beside the definitions, and the backups beside the settings.
platform::UserFolders movedFolders(const StateFolders& state, FolderNotices& notices)
{
    const platform::UserFolders user{state.state, state.state + QStringLiteral("/vorlant/Log"),
                                     state.data + QStringLiteral("/Backup")};
    moveOnce(state.data + QStringLiteral("/Log"), user.logs, notices);
    if (!state.settings.isEmpty())
        moveOnce(state.settings + QStringLiteral("/Vorlan/Backup"), user.backups, notices);
    return user;
}

// One line says what two would: neither the program folder nor the settings can be written.
FolderNotices asOne(const FolderNotices& program, const FolderNotice& settings, const QString& home)
{
    const bool isFillFailure = program.size() == 1 && program.first().text == kNotFilled;
    return isFillFailure ? FolderNotices{{kNotKept, home, settings.detail}} : program + FolderNotices{settings};
}

} // namespace

ProgramFolders programFolders(const platform::PathMap& paths, const QString& executableFolder,
                              const QString& installedData, const QProcessEnvironment& environment,
                              const QString& withoutHome)
{
    QString program = presetProgramFolder(executableFolder, environment);
    const StateFolders state(environment, withoutHome, program.isEmpty());
    FolderNotices notices = state.notices;
    const bool ownsProgramFolder = program.isEmpty() && !state.data.isEmpty() && !state.state.isEmpty();
    if (program.isEmpty())
        program = state.data.isEmpty() ? installedData : filledFolder(state.data, installedData, notices);
    const platform::Result<> made = state.settings.isEmpty() ? platform::Result<>() : makeWritable(state.settings);
    if (!made.ok())
        notices =
            asOne(notices, {kNoSettings, state.settings, made.error()}, environment.value(QStringLiteral("HOME")));
    const bool isPackaged = QFileInfo(program).canonicalFilePath() == QFileInfo(installedData).canonicalFilePath();
    const platform::UserFolders user =
        ownsProgramFolder ? movedFolders(state, notices) : platform::UserFolders{state.state, {}, {}};
    return {platform::Folders(paths, program, state.settings, isPackaged, user), notices};
}
