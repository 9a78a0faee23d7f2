#include "GridModel.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

namespace {

TEST(ColumnLayout, AbsurdWidthsAreLeftOut)
{
    TestMachine box;
    clsLibrary library(box.context);
    platform::GridModel grid;
    grid.setMaxCols(2);
    const struct
    {
        const char* stored;
        double width;
    } rows[] = {{"-3", 8}, {"1e30", 8}, {"nan", 8}, {"0", 0}, {"500", 500}};
    for (const auto& row : rows) {
        grid.setColWidth(1, 8);
        library.getIniFilePath(QStringLiteral("Main")); // makes the folder
        ASSERT_TRUE(box.put(QStringLiteral("C:\\Users\\AppData\\Vorlan\\VorlantPos.ini"),
                            QByteArray("[Main]\r\nSPCOLWIDTH1=") + row.stored + "\r\n"));
        library.loadColSize(grid, QStringLiteral("Main"), QString());
        EXPECT_EQ(grid.colWidth(1), row.width) << row.stored;
    }
}

} // namespace
