#include "PathMap.h"

#include "ScratchFolder.h"
#include "Table.h"

#include <gtest/gtest.h>

using platform::PathMap;

namespace {

// Drive C: on a scratch folder that holds Program/Ini/Model.INI, Program/DATA and program2.
class Paths : public ::testing::Test
{
protected:
    Paths()
    {
        for (const char* folder : {"/Program/DATA", "/program2", "-neighbour"})
            QDir().mkpath(root + QLatin1String(folder));
        EXPECT_TRUE(box.put(QStringLiteral("drive/Program/Ini/Model.INI"), ""));
        paths.mount(u'c', root + u'/');
    }

    ScratchFolder box;
    QString root = box.path(QStringLiteral("drive"));
    PathMap paths;
};

TEST_F(Paths, AreFound)
{
    for (const QStringList& row : tableRows("platform/paths.tsv"))
        EXPECT_EQ(paths.toMachine(row[1]), row[2] == u"<none>" ? QString() : root + row[2]) << qPrintable(row[0]);
}

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

TEST_F(Paths, LongestMountedFolderNamesTheDrive)
{
    paths.mount(u'D', root + QStringLiteral("/Program"));
    const struct
    {
        const char* machine; // "~" stands for the drive's folder
        const char* desktop;
    } rows[] = {{"~", "C:\\"},
                {"~/program2", "C:\\program2"},
                {"~/program2/", "C:\\program2"},
                {"~/Program/Ini", "D:\\Ini"},
                {"~/Program", "D:\\"},
                {"~/a/../b", "C:\\b"},
                {"/usr/share", "Z:\\usr\\share"},
                {"/", "Z:\\"}};
    for (const auto& row : rows) {
        const QString machine = QString::fromUtf8(row.machine).replace(u'~', root);
        EXPECT_EQ(paths.toDesktop(machine).toStdString(), row.desktop) << row.machine;
    }
    EXPECT_TRUE(paths.toDesktop(root + QStringLiteral("-neighbour")).startsWith(u"Z:\\"));
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

} // namespace
