#include "ProfileStore.h"
#include "ProgramFolders.h"

#include "ScratchFolder.h"
#include "Table.h"

#include <gtest/gtest.h>

using platform::PathMap;

namespace {

// A machine with a home, an installation without its own definitions folder and the installed data.
class FoldersOf : public ::testing::Test, protected ScratchFolder
{
protected:
    FoldersOf()
    {
        for (const char* folder : {"home", "bin", "program/ini"})
            QDir().mkpath(path(folder));
        put("data/ini/KX410Screen.ini", "installed");
        put("data/Lang/JP.txt", "installed");
        environment.insert("HOME", path("home"));
    }

    ProgramFolders start(const char* executableFolder = "bin") const
    {
        return programFolders(paths, path(executableFolder), path("data"), environment, path(withoutHome));
    }
    QString machine(const QString& desktop) const { return paths.toMachine(desktop); }

    const char* withoutHome = "state";
    PathMap paths;
    QProcessEnvironment environment;
};

// What cannot be copied as a whole is not used: the disk is full in the middle of the definitions.
TEST_F(FoldersOf, HalfFilledFolderIsNotUsed)
{
    put("home/.local/share/vorlant/ini", "in the way");
    const auto [folders, notices] = start();
    EXPECT_EQ(machine(folders.program()), path("data"));
    EXPECT_EQ(notices.size(), 1);
}

TEST_F(FoldersOf, FirstStartFillsTheProgramFolderAndLaterOnesKeepEdits)
{
    QFile::setPermissions(path("data/ini/KX410Screen.ini"), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    start();
    EXPECT_EQ(content("home/.local/share/vorlant/ini/KX410Screen.ini"), "installed");
    EXPECT_EQ(content("home/.local/share/vorlant/Lang/JP.txt"), "installed");
    EXPECT_TRUE(QFile::permissions(path("home/.local/share/vorlant/ini/KX410Screen.ini")).testFlag(QFile::WriteOwner));
    EXPECT_TRUE(QDir(path("home/.config")).exists());
    put("home/.local/share/vorlant/ini/KX410Screen.ini", "mine");
    put("data/ini/KX620Screen.ini", "new");
    start();
    EXPECT_EQ(content("home/.local/share/vorlant/ini/KX410Screen.ini"), "mine");
    EXPECT_EQ(content("home/.local/share/vorlant/ini/KX620Screen.ini"), "new");
}

TEST_F(FoldersOf, EnvironmentChoosesTheFolders)
{
    const QProcessEnvironment plain = environment;
    for (const QStringList& row : tableRows("infra/folders.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        QDir(path("home/.local")).removeRecursively();
        environment = plain;
        for (const QString& variable : row[2].split(' '))
            environment.insert(variable.section('=', 0, 0), variable.section('=', 1).replace('~', path() + '/'));
        put(row[3] + "/Log/Vorlant.log", "old");
        put(row[4] + "/Vorlan/Backup/KX410.kx410", "held");
        const auto [folders, notices] = start(row[1].toLatin1().constData());
        EXPECT_EQ(machine(folders.program()), path(row[3]));
        EXPECT_EQ(machine(folders.logs()), path(row[7]));
        EXPECT_EQ(content(row[7] + "/Vorlant.log"), "old");
        EXPECT_EQ(content(row[8] + "/KX410.kx410"), "held");
        EXPECT_EQ(machine(folders.applicationData()), path(row[4]));
        EXPECT_EQ(folders.state(), path(row[6]));
        EXPECT_TRUE(notices.isEmpty() && !folders.isPackaged());
        EXPECT_EQ(content(row[3] + "/ini/KX410Screen.ini"), row[5]) << "filled";
        EXPECT_EQ(QDir(path("home/.local")).exists(), row[3].startsWith("home"));
    }
}

// Not even root makes a folder below a file. What is installed is read, and never written.
TEST_F(FoldersOf, OneLineSaysThatNothingCanBeKept)
{
    withoutHome = "data/Lang/JP.txt/state";
    const QStringList rows[] = {
        // what it is, a variable with its value, the place and words of the line
        {"no home", "LANG", "", "data/Lang/JP.txt/state", "Set HOME, or"},
        {"home that cannot be written to", "HOME", "data/Lang/JP.txt", "data/Lang/JP.txt", "set HOME to a folder"},
        {"the package as program folder", "VORLANT_PROGRAM_DIR", "data", "data/Lang/JP.txt/state", "Set HOME, or"},
    };
    for (const QStringList& row : rows) {
        SCOPED_TRACE(qPrintable(row[0]));
        environment.clear();
        environment.insert(row[1], path(row[2]));
        const auto [folders, notices] = start();
        EXPECT_EQ(machine(folders.program()), path("data"));
        EXPECT_TRUE(folders.isPackaged());
        ASSERT_EQ(notices.size(), 1);
        EXPECT_EQ(notices[0].place, path(row[3]));
        EXPECT_TRUE(notices[0].english().contains(row[4]));

        platform::ProfileStore profiles{platform::CodePage()};
        profiles.protect(machine(folders.program()));
        EXPECT_FALSE(profiles.write(path("data/ini/KX410Screen.ini"), "S", "K", "1").ok());
        EXPECT_EQ(content("data/ini/KX410Screen.ini"), "installed");
    }
}

} // namespace
