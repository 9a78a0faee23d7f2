#include "PathMap.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using platform::PathMap;

namespace {

// Drive C: on a scratch folder that holds Program/Ini/Model.INI, Program/DATA and program2.
class Paths : public ::testing::Test
{
protected:
    Paths()
    {
        QDir().mkpath(root + QStringLiteral("/Program/Ini"));
        QDir().mkpath(root + QStringLiteral("/Program/DATA"));
        QDir().mkpath(root + QStringLiteral("/program2"));
        QDir().mkpath(root + QStringLiteral("-neighbour"));
        QFile file(root + QStringLiteral("/Program/Ini/Model.INI"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        paths.mount(u'c', root + u'/');
    }

    QTemporaryDir dir;
    QString root = dir.path() + QStringLiteral("/drive");
    PathMap paths;
};

struct Lookup
{
    const char* name;
    const char* desktop;
    const char* machine; // below the drive's folder; null: no machine path
};

class PathLookup : public Paths, public ::testing::WithParamInterface<Lookup>
{};

TEST_P(PathLookup, FindsTheMachinePath)
{
    const QString found = paths.toMachine(QString::fromUtf8(GetParam().desktop));
    const QString expected = GetParam().machine == nullptr ? QString() : root + QString::fromUtf8(GetParam().machine);
    EXPECT_EQ(found.toStdString(), expected.toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PathLookup,
    ::testing::Values(Lookup{"AsWritten", "C:\\Program\\Ini\\Model.INI", "/Program/Ini/Model.INI"},
                      Lookup{"OtherCase", "c:\\PROGRAM\\ini\\model.ini", "/Program/Ini/Model.INI"},
                      Lookup{"ForwardSlashes", "C:/program/ini/model.ini", "/Program/Ini/Model.INI"},
                      Lookup{"DoubledSlashes", "C:\\\\Program\\\\Ini\\Model.INI", "/Program/Ini/Model.INI"},
                      Lookup{"TrailingSlash", "C:\\program\\data\\", "/Program/DATA"},
                      Lookup{"MissingFile", "C:\\program\\ini\\New.ini", "/Program/Ini/New.ini"},
                      Lookup{"MissingFolder", "C:\\program\\None\\New.ini", "/Program/None/New.ini"},
                      Lookup{"Japanese", "C:\\program\\設定.ini", "/Program/設定.ini"}, Lookup{"Root", "C:\\", ""},
                      Lookup{"DriveOnly", "C:", ""}, Lookup{"NoSlashBehindTheDrive", "C:program2", "/program2"},
                      Lookup{"NeighbourOfTheDrive", "C:-neighbour", "/-neighbour"},
                      Lookup{"UnmountedDrive", "Q:\\Program", nullptr},
                      Lookup{"NetworkPath", "\\\\server\\share\\file.ini", nullptr},
                      Lookup{"NoDrive", "Program\\Ini", nullptr}, Lookup{"BackslashOnly", "\\Program", nullptr},
                      Lookup{"MachinePath", "/etc", nullptr}, Lookup{"Letter", "C", nullptr},
                      Lookup{"Empty", "", nullptr}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Paths, ExactCaseWinsOverAnother)
{
    QDir().mkpath(root + QStringLiteral("/PROGRAM2"));
    EXPECT_EQ(paths.toMachine(QStringLiteral("C:\\program2")), root + QStringLiteral("/program2"));
    EXPECT_EQ(paths.toMachine(QStringLiteral("C:\\PROGRAM2")), root + QStringLiteral("/PROGRAM2"));
}

TEST_F(Paths, DriveZIsTheRootWhateverTheWorkingFolder)
{
    EXPECT_EQ(paths.toMachine(QStringLiteral("Z:\\")), u"/");
    EXPECT_EQ(paths.toMachine(QStringLiteral("Z:")), u"/");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root));
    EXPECT_EQ(paths.toMachine(QStringLiteral("Z:program2")), u"/program2") << "not below the working folder";
    QDir::setCurrent(before);
}

struct Desktop
{
    const char* machine; // "~" stands for the drive's folder
    const char* desktop;
};

TEST_F(Paths, LongestMountedFolderNamesTheDrive)
{
    paths.mount(u'D', root + QStringLiteral("/Program"));
    for (const Desktop& row :
         {Desktop{"~", "C:\\"}, Desktop{"~/program2", "C:\\program2"}, Desktop{"~/program2/", "C:\\program2"},
          Desktop{"~/Program/Ini", "D:\\Ini"}, Desktop{"~/Program", "D:\\"}, Desktop{"~/a/../b", "C:\\b"},
          Desktop{"/usr/share", "Z:\\usr\\share"}, Desktop{"/", "Z:\\"}}) {
        const QString machine = QString::fromUtf8(row.machine).replace(u'~', root);
        EXPECT_EQ(paths.toDesktop(machine).toStdString(), row.desktop) << row.machine;
    }
    EXPECT_TRUE(paths.toDesktop(root + QStringLiteral("-neighbour")).startsWith(u"Z:\\"));
}

TEST_F(Paths, DesktopPathComesBack)
{
    for (const char* below : {"/Program/Ini/Model.INI", "/Program/New folder/設定.ini", ""}) {
        const QString machine = root + QString::fromUtf8(below);
        EXPECT_EQ(paths.toMachine(paths.toDesktop(machine)), machine);
    }
}

TEST_F(Paths, FilesAndFoldersAreToldApart)
{
    EXPECT_TRUE(paths.fileExists(QStringLiteral("C:\\program\\ini\\MODEL.ini")));
    EXPECT_FALSE(paths.fileExists(QStringLiteral("C:\\program\\ini")));
    EXPECT_TRUE(paths.dirExists(QStringLiteral("C:\\program\\INI")));
    EXPECT_FALSE(paths.dirExists(QStringLiteral("C:\\program\\ini\\model.ini")));
    EXPECT_FALSE(paths.dirExists(QStringLiteral("Q:\\")));
    EXPECT_EQ(paths.filesIn(QStringLiteral("C:\\PROGRAM\\INI")), QStringList{QStringLiteral("Model.INI")});
    EXPECT_TRUE(paths.filesIn(QStringLiteral("Q:\\")).isEmpty()) << "not the working folder's files";
}

TEST_F(Paths, OneLevelIsMade)
{
    EXPECT_TRUE(paths.makeOneDir(QStringLiteral("C:\\program\\Log")));
    EXPECT_TRUE(QDir(root + QStringLiteral("/Program/Log")).exists()) << "below the folder that is there";
    EXPECT_TRUE(paths.makeOneDir(QStringLiteral("C:\\PROGRAM\\LOG"))) << "it exists already";
    EXPECT_EQ(QDir(root + QStringLiteral("/Program")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 3);
    EXPECT_FALSE(paths.makeOneDir(QStringLiteral("C:\\a\\b")));
    EXPECT_FALSE(paths.makeOneDir(QStringLiteral("C:\\program\\ini\\model.ini")));
    EXPECT_FALSE(paths.makeOneDir(QStringLiteral("Q:\\a")));
}

TEST_F(Paths, DriveTypes)
{
    for (const char16_t* fixed : {u"C:", u"c:\\", u"Z:\\"})
        EXPECT_EQ(paths.driveType(QString::fromUtf16(fixed)), PathMap::DriveType::Fixed);
    for (const char16_t* none : {u"Q:\\", u"C", u"", u"\\\\s", u"C:\\Program"})
        EXPECT_EQ(paths.driveType(QString::fromUtf16(none)), PathMap::DriveType::NoRoot);
}

TEST_F(Paths, DiskSpaceOfAMountedDriveOnly)
{
    qint64 total = -1;
    qint64 free = -1;
    EXPECT_FALSE(paths.diskSpace(QStringLiteral("Q:\\"), total, free));
    EXPECT_EQ(total, -1);
    ASSERT_TRUE(paths.diskSpace(QStringLiteral("C:\\"), total, free));
    EXPECT_GT(total, 0);
    EXPECT_LE(free, total);
}

} // namespace
