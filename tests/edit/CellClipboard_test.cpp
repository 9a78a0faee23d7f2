#include "CellClipboard.h"

#include "CellHint.h"
#include "EditorFixture.h"

namespace {

class Clipboard : public EditorFixture
{
protected:
    // Rows 1 to 6, column 1.
    void parameters()
    {
        screen({QStringLiteral("A|Data|10|1,0,9,<=,<="),
                QStringLiteral("C|Combo|0||ComboStrings=offvbTabon\n"
                               "ComboDatas=0vbTab1"),
                QStringLiteral("LO|Data|0|0,0,TAGHI,<=,<="), QStringLiteral("HI|Data|5|0,TAGLO,99,<=,<="),
                QStringLiteral("T|String|text"), QStringLiteral("RO|Data|3||CommWriteSection=")});
    }
    CellClipboard clipboard{editor};
};

TEST_F(Clipboard, CopiesRectangles)
{
    parameters();
    grid.setText(2, 2, QStringLiteral("two\nlines\tand a tab"));
    struct
    {
        platform::CellRange range;
        const char* text;
    } const rows[] = {{{1, 1}, "1.0"}, {{1, 1, 2, 2}, "1.0\t\noff\ttwo lines and a tab"}, {{4, 1, 6, 1}, "5\ntext\n3"}};
    for (const auto& row : rows)
        EXPECT_EQ(clipboard.copy(row.range), QLatin1String(row.text));
}

TEST_F(Clipboard, PastesLikeEntries)
{
    struct
    {
        const char* name;
        platform::CellRange range;
        const char* text;
        const char* shown;
        int refused;
    } const rows[] = {
        {"OtherProgramsLines", {1, 1}, "2.5\r\non\r\n", "A=2.5 C=on LO=0 HI=5", 0},
        {"ColumnsBesideAreNoParameters", {1, 1}, "2.5\tx\ty", "A=2.5 C=off LO=0 HI=5", 0},
        {"OutsideAndUnknownChoice", {1, 1}, "9.1\nmaybe", "A=1.0 C=off LO=0 HI=5", 2},
        {"ClosedCells", {5, 1}, "other\n4", "A=1.0 C=off LO=0 HI=5", 2},
        {"OneFillsTheRange", {3, 1, 4, 1}, "4", "A=1.0 C=off LO=4 HI=4", 0},
        {"OrderOfLimits", {3, 1}, "50\n60", "A=1.0 C=off LO=50 HI=60", 0},
        {"BeyondTheGrid", {30, 1}, "1\n2\n3", "A=1.0 C=off LO=0 HI=5", 0},
    };
    for (const auto& row : rows) {
        parameters();
        record.texts.clear();
        const Everything before = everything();
        EXPECT_EQ(clipboard.paste(row.range, QString::fromLatin1(row.text)), row.refused) << row.name;
        EXPECT_EQ(shown(QStringLiteral("A C LO HI")), row.shown) << row.name;
        EXPECT_EQ(record.texts.size(), row.refused > 0 ? 1 : 0) << row.name;
        EXPECT_TRUE(
            record.texts.join(u' ').startsWith(row.refused > 0 ? QStringLiteral("%1 of").arg(row.refused) : QString()))
            << row.name;
        editor.undo();
        EXPECT_TRUE(everything() == before) << "one paste is one step: " << row.name;
    }
}

// The decimal point comes last in the block, and all values are read with it; one of them looks as it did.
TEST_F(Clipboard, SettingsOfABlockComeFirst)
{
    screen({QStringLiteral("A|Data|0|DOTSVDOT,-9,9,<=,<="), QStringLiteral("B|Data|5|DOTSVDOT,-9,9,<=,<="),
            QStringLiteral("SVDOT|Combo|0||ComboStrings=0vbTab1vbTab3\nComboDatas=0vbTab1vbTab3")});
    grid.setLocked(3, 1, false);
    EXPECT_EQ(clipboard.paste({1, 1}, QStringLiteral("1.234\n5\n3")), 0);
    EXPECT_EQ(shown(QStringLiteral("A B SVDOT")), "A=1.234 B=5.000 SVDOT=3");
    EXPECT_EQ(item(QStringLiteral("B")).Data(), u"5000");
}

TEST_F(Clipboard, CopyAndPasteOfAllChangesNothing)
{
    shipped(QStringLiteral("KX910"));
    const QString all = clipboard.copy({1, 1, grid.maxRows(), grid.maxCols()});
    EXPECT_EQ(clipboard.paste({1, 1}, all), 0);
    EXPECT_EQ(marked(), "");
}

class Hint : public EditorFixture
{};

TEST_F(Hint, TellsLimitsMeaningOrWhyNot)
{
    shipped(QStringLiteral("KX910"));
    start(QStringLiteral("PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=1000 PQKAL1=5"));
    struct
    {
        const char* tag;
        const char* hint; // %1: the parameter's name
    } const rows[] = {
        {"VQSV1", "0.0 <= %1 <= 100.0"},
        {"VQOH1", "0.0 < %1 <= 105.0"},
        {"SWQCF", "%1: locked, a voltage or current input has no temperature unit"},
        {"VQAL1", "%1: locked, the alarm type does not use it"},
        {"PQRNO", "%1: double-click or press Enter to choose"},
        {"VQPV", "%1: shown only, cannot be changed"},
    };
    const auto hintOf = [this](const char* tag) {
        const clsData& one = item(QLatin1String(tag));
        return cellHint(kx, one.Col(), one.Row(), library.translation());
    };
    for (const auto& row : rows)
        EXPECT_EQ(hintOf(row.tag), QString::fromLatin1(row.hint).arg(item(QLatin1String(row.tag)).DataName()));
    EXPECT_EQ(cellHint(kx, 1, 1, library.translation()), QString()) << "a label";
    EXPECT_EQ(hintOf("PIDONOF"), item(QStringLiteral("PIDONOF")).DataName() + QStringLiteral(": ") +
                                     cell(QStringLiteral("PIDONOF")).comboList.join(QStringLiteral(" / ")));
    start(QStringLiteral("PQRNO=1"));
    EXPECT_TRUE(hintOf("VQLIL").endsWith(QStringLiteral(": locked, the input range fixes it")));
}

} // namespace
