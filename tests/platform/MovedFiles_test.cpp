#include "MovedFiles.h"

#include "ScratchFolder.h"

#include <QFileInfo>
#include <gtest/gtest.h>

namespace {

// In one file system and from one to another.
TEST(MovedFiles, GoOnceAndReplaceNothing)
{
    for (const char* place : {"/tmp/vorlant-XXXXXX", "/dev/shm/vorlant-XXXXXX"}) {
        SCOPED_TRACE(place);
        const QTemporaryDir other(place);
        ASSERT_TRUE(other.isValid());
        const ScratchFolder scratch;
        const QString to = other.filePath("a/b");
        ASSERT_TRUE(scratch.put("Log/one.log", "1") && scratch.put("Log/two.log", "2"));
        EXPECT_TRUE(platform::moveFiles(scratch.path("Log"), to).ok());
        EXPECT_FALSE(QFileInfo::exists(scratch.path("Log")));
        EXPECT_EQ(QDir(to).entryList(QDir::Files | QDir::Hidden), (QStringList{"one.log", "two.log"}));
        ASSERT_TRUE(scratch.put("Log/one.log", "newer") && scratch.put("Log/three.log", "3"));
        EXPECT_TRUE(platform::moveFiles(scratch.path("Log"), to).ok());
        EXPECT_EQ(scratch.content("Log/one.log"), "newer") << "its name is taken there";
        EXPECT_EQ(scratch.names("Log"), QStringList{"one.log"});
        QFile kept(to + "/one.log");
        EXPECT_TRUE(kept.open(QIODevice::ReadOnly) && kept.readAll() == "1");
        EXPECT_TRUE(platform::moveFiles(scratch.path("none"), to).ok());
        EXPECT_FALSE(platform::moveFiles(scratch.path("Log"), to + "/one.log/x").ok()) << "below a file";
        EXPECT_EQ(scratch.content("Log/one.log"), "newer");
    }
}

} // namespace
