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
    QByteArray content(const char* name) const
    {
        QFile file(folder() + u'/' + QLatin1String(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    QVector<double> widths() const { return {grid.colWidth(0), grid.colWidth(1), grid.colWidth(2)}; }

    TestMachine box;
    clsLibrary library{box.context};
    platform::GridModel grid;
};

TEST_F(Columns, AreSavedAndComeBack)
{
    grid.setColWidth(0, 4.5);
    grid.setColWidth(2, 22.25);
    library.saveColSize(grid, QStringLiteral("Main"), QString());
    EXPECT_EQ(content("VorlantPos.ini"), "[Main]\r\nSPCOLWIDTH0=4.5\r\nSPCOLWIDTH1=8\r\nSPCOLWIDTH2=22.25\r\n");
    for (int column = 0; column <= 2; ++column)
        grid.setColWidth(column, 1);
    library.loadColSize(grid, QStringLiteral("Main"), QString());
    EXPECT_EQ(widths(), QVector<double>({4.5, 8, 22.25}));
}

TEST_F(Columns, GoToTheFileThatIsNamed)
{
    library.loadColSize(grid, QStringLiteral("Table"), QStringLiteral("Other.ini"));
    EXPECT_EQ(content("Other.ini"), "[Table]\r\nSPCOLWIDTH0=8\r\nSPCOLWIDTH1=8\r\nSPCOLWIDTH2=8\r\n");
    EXPECT_EQ(content("VorlantPos.ini"), "<none>");
}

TEST_F(Columns, AbsurdWidthsAreLeftOut)
{
    struct Row
    {
        const char* stored;
        double width;
    };
    for (const Row& row : {Row{"-3", 8}, Row{"wide", 8}, Row{"1e30", 8}, Row{"501", 8}, Row{"nan", 8}, Row{"", 8},
                           Row{"0", 0}, Row{"500", 500}}) {
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
