#include "Folders.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using platform::Folders;
using platform::PathMap;

namespace {

// A machine with a home, an installation without its own definitions folder and the installed data.
class FoldersOf : public ::testing::Test
{
protected:
    FoldersOf()
    {
        for (const char* folder : {"home", "bin", "data/ini", "data/Lang", "program/ini"})
            QDir().mkpath(path(folder));
        put("data/ini/KX410Screen.ini", "installed");
        put("data/Lang/JP.txt", "installed");
        environment.insert(QStringLiteral("HOME"), path("home"));
    }

    QString path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }
    void put(const char* name, const QByteArray& bytes)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray content(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }

    Folders start(const char* executableFolder = "bin") const
    {
        return Folders::forProcess(paths, path(executableFolder), path("data"), environment);
    }
    QString machine(const QString& desktop) const { return paths.toMachine(desktop); }

    QTemporaryDir dir;
    PathMap paths;
    QProcessEnvironment environment;
};

// What cannot be copied as a whole is not used: the disk is full in the middle of the definitions.
TEST_F(FoldersOf, HalfFilledFolderIsNotUsed)
{
    ASSERT_TRUE(QDir().mkpath(path("home/.local/share/vorlant")));
    put("home/.local/share/vorlant/ini", "in the way");
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("data"));
    EXPECT_EQ(folders.notices().size(), 1);
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
    constexpr const char* kConfig = "home/.config";
    const struct
    {
        const char* name;
        const char* executable;
        QList<std::pair<const char*, QString>> variables;
        const char* program;
        const char* applicationData;
    } rows[] = {
        {"the home", "bin", {}, "home/.local/share/vorlant", kConfig},
        {"named", "program", {{"VORLANT_PROGRAM_DIR", path("elsewhere")}}, "elsewhere", kConfig},
        {"beside the executable", "program", {}, "program", kConfig},
        {"desktop folders",
         "bin",
         {{"XDG_DATA_HOME", path("xdg")}, {"XDG_CONFIG_HOME", path("cfg")}},
         "xdg/vorlant",
         "cfg"},
        {"relative ones are none",
         "bin",
         {{"XDG_DATA_HOME", QStringLiteral("data")}, {"XDG_CONFIG_HOME", QString()}},
         "home/.local/share/vorlant",
         kConfig},
    };
    const QProcessEnvironment plain = environment;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QDir(path("home/.local")).removeRecursively();
        environment = plain;
        for (const auto& [variable, value] : row.variables)
            environment.insert(QLatin1String(variable), value);
        const Folders folders = start(row.executable);
        EXPECT_EQ(machine(folders.program()), path(row.program));
        EXPECT_EQ(machine(folders.applicationData()), path(row.applicationData));
        EXPECT_EQ(QDir(path("home/.local")).exists(), QByteArray(row.program).startsWith("home")) << "copied";
    }
}

TEST_F(FoldersOf, WithoutAHomeTheInstalledDataIsUsedInPlace)
{
    environment.clear();
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("data"));
    EXPECT_EQ(folders.applicationData(), QString());
}

TEST_F(FoldersOf, HomeThatCannotBeWrittenToIsToldAndTheInstalledDataIsUsed)
{
    environment.insert(QStringLiteral("HOME"), path("data/Lang/JP.txt")); // not even root makes a folder below a file
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("data"));
    ASSERT_EQ(folders.notices().size(), 2);
    EXPECT_EQ(folders.notices()[0].place, path("data/Lang/JP.txt/.local/share/vorlant"));
    EXPECT_EQ(folders.notices()[1].place, path("data/Lang/JP.txt/.config"));
}

} // namespace
