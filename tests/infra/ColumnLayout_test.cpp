#include "GridModel.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

class Columns : public ::testing::Test
{
protected:
    Columns()
    {
        QDir().mkpath(folder());
        grid.setMaxCols(2);
        grid.setMaxRows(3);
    }
    QString folder() const { return box.path(QStringLiteral("C:\\Users\\AppData\\Vorlan")); }

    TestMachine box;
    clsLibrary library{box.context};
    platform::GridModel grid;
};

TEST_F(Columns, AbsurdWidthsAreLeftOut)
{
    struct Row
    {
        const char* stored;
        double width;
    };
    for (const Row& row : {Row{"-3", 8}, Row{"1e30", 8}, Row{"nan", 8}, Row{"0", 0}, Row{"500", 500}}) {
        grid.setColWidth(1, 8);
        QFile file(folder() + QStringLiteral("/VorlantPos.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[Main]\r\nSPCOLWIDTH1=") + row.stored + "\r\n");
        file.close();
        library.loadColSize(grid, QStringLiteral("Main"), QString());
        EXPECT_EQ(grid.colWidth(1), row.width) << row.stored;
    }
}

} // namespace
