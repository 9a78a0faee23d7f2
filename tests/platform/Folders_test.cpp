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
    void set(const char* variable, const QString& value) { environment.insert(QLatin1String(variable), value); }

    Folders start(const char* executableFolder = "bin") const
    {
        return Folders::forProcess(paths, path(executableFolder), path("data"), environment);
    }
    QString machine(const QString& desktop) const { return paths.toMachine(desktop); }

    QTemporaryDir dir;
    PathMap paths;
    QProcessEnvironment environment;
};

TEST_F(FoldersOf, HomeIsTheDefaultAndIsFilledAtTheFirstStart)
{
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("home/.local/share/vorlant"));
    EXPECT_EQ(machine(folders.applicationData()), path("home/.config"));
    EXPECT_EQ(content("home/.local/share/vorlant/ini/KX410Screen.ini"), "installed");
    EXPECT_EQ(content("home/.local/share/vorlant/Lang/JP.txt"), "installed");
    EXPECT_TRUE(QDir(path("home/.config")).exists());
    EXPECT_TRUE(folders.notices().isEmpty());
}

TEST_F(FoldersOf, CopiesOfReadOnlyFilesCanBeEdited)
{
    QFile::setPermissions(path("data/ini/KX410Screen.ini"), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    start();
    const auto rights = QFile::permissions(path("home/.local/share/vorlant/ini/KX410Screen.ini"));
    EXPECT_TRUE(rights.testFlag(QFile::WriteOwner));
}

TEST_F(FoldersOf, VariableNamesTheProgramFolder)
{
    set("VORLANT_PROGRAM_DIR", path("elsewhere"));
    EXPECT_EQ(machine(start("program").program()), path("elsewhere"));
    EXPECT_FALSE(QDir(path("home/.local")).exists()) << "nothing is copied";
}

TEST_F(FoldersOf, VariableMayBeRelative)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path()));
    set("VORLANT_PROGRAM_DIR", QStringLiteral("program"));
    EXPECT_EQ(QDir(machine(start().program())).canonicalPath(), QDir(path("program")).canonicalPath());
    QDir::setCurrent(before);
}

TEST_F(FoldersOf, ExecutablesFolderWithDefinitionsIsTheProgramFolder)
{
    EXPECT_EQ(machine(start("program").program()), path("program"));
    EXPECT_FALSE(QDir(path("home/.local")).exists());
}

TEST_F(FoldersOf, XdgFoldersWinOverTheHome)
{
    set("XDG_DATA_HOME", path("xdg-data"));
    set("XDG_CONFIG_HOME", path("xdg-config"));
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("xdg-data/vorlant"));
    EXPECT_EQ(machine(folders.applicationData()), path("xdg-config"));
    EXPECT_TRUE(QDir(path("xdg-config")).exists());
}

TEST_F(FoldersOf, RelativeXdgFoldersAreIgnored)
{
    set("XDG_DATA_HOME", QStringLiteral("data"));
    set("XDG_CONFIG_HOME", QString());
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("home/.local/share/vorlant"));
    EXPECT_EQ(machine(folders.applicationData()), path("home/.config"));
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
    set("HOME", path("data/Lang/JP.txt")); // not even root makes a folder below a file
    const Folders folders = start();
    EXPECT_EQ(machine(folders.program()), path("data"));
    ASSERT_EQ(folders.notices().size(), 2);
    EXPECT_EQ(folders.notices()[0].place, path("data/Lang/JP.txt/.local/share/vorlant"));
    EXPECT_EQ(folders.notices()[1].place, path("data/Lang/JP.txt/.config"));
}

TEST_F(FoldersOf, NothingInstalledLeavesAnEmptyProgramFolder)
{
    ASSERT_TRUE(QDir(path("data")).removeRecursively());
    const Folders folders = start();
    EXPECT_TRUE(QDir(machine(folders.program())).exists());
    EXPECT_TRUE(QDir(machine(folders.program())).isEmpty());
}

TEST_F(FoldersOf, GivenFoldersAreDesktopPaths)
{
    paths.mount(u'C', dir.path());
    const Folders folders(paths, path("program"), QString());
    EXPECT_EQ(folders.program(), u"C:\\program");
    EXPECT_EQ(folders.applicationData(), QString());
    EXPECT_EQ(folders.baseName(), u"Vorlant");
    EXPECT_TRUE(paths.dirExists(folders.temporary()));
}

} // namespace
