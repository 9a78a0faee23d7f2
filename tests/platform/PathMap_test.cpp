#include "PathMap.h"

#include "ScratchFolder.h"
#include "Table.h"

#include <gtest/gtest.h>

namespace {

// Drive C: on a scratch folder that holds Program/Ini/Model.INI, Program/DATA and program2.
class Paths : public ::testing::Test
{
protected:
    Paths()
    {
        for (const char* folder : {"/Program/DATA", "/program2", "-neighbour"})
            QDir().mkpath(root + folder);
        EXPECT_TRUE(box.put("drive/Program/Ini/Model.INI", ""));
        paths.mount('c', root + '/');
    }

    ScratchFolder box;
    QString root = box.path("drive");
    platform::PathMap paths;
};

TEST_F(Paths, AreFound)
{
    QDir().mkpath(root + "/PROGRAM3");
    QDir().mkpath(root + "/program3");
    for (const QStringList& row : tableRows("platform/paths.tsv"))
        EXPECT_EQ(paths.toMachine(row[1]), row[2] == u"<none>" ? QString() : root + row[2]) << qPrintable(row[0]);
}

TEST_F(Paths, DriveZIsTheRootWhateverTheWorkingFolder)
{
    EXPECT_EQ(paths.toMachine("Z:\\") + paths.toMachine("Z:"), u"//");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root));
    EXPECT_EQ(paths.toMachine("Z:program2"), u"/program2") << "not below the working folder";
    QDir::setCurrent(before);
}

TEST_F(Paths, LongestMountedFolderNamesTheDrive)
{
    paths.mount('D', root + "/Program");
    // "~" stands for the drive's folder
    const std::pair<QString, const char*> rows[] = {
        {"~", "C:\\"},         {"~/program2", "C:\\program2"},  {"~/program2/", "C:\\program2"},
        {"~/Program", "D:\\"}, {"~/Program/Ini", "D:\\Ini"},    {"~/a/../b", "C:\\b"},
        {"/", "Z:\\"},         {"/usr/share", "Z:\\usr\\share"}};
    for (const auto& [machine, desktop] : rows)
        EXPECT_EQ(paths.toDesktop(QString(machine).replace('~', root)), desktop);
    EXPECT_TRUE(paths.toDesktop(root + "-neighbour").startsWith("Z:\\"));
}

TEST_F(Paths, FilesAndFoldersAreToldApart)
{
    const std::tuple<const char*, bool, bool> rows[] = {
        {"C:\\program\\ini\\MODEL.ini", true, false}, {"C:\\program\\INI", false, true}, {"Q:\\", false, false}};
    for (const auto& [path, isFile, isFolder] : rows) {
        EXPECT_EQ(paths.fileExists(path), isFile) << path;
        EXPECT_EQ(paths.dirExists(path), isFolder) << path;
    }
    EXPECT_EQ(paths.filesIn("C:\\PROGRAM\\INI"), QStringList{"Model.INI"});
    EXPECT_TRUE(paths.filesIn("Q:\\").isEmpty()) << "not the working folder's files";
}

} // namespace
