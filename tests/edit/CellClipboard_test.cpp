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
        screen({"A|Data|10|1,0,9,<=,<=", "C|Combo|0||ComboStrings=offvbTabon\nComboDatas=0vbTab1",
                "LO|Data|0|0,0,TAGHI,<=,<=", "HI|Data|5|0,TAGLO,99,<=,<=", "T|String|text",
                "RO|Data|3||CommWriteSection=", "BESIDE|Data|3||CommWriteSection=\nCellData=3,2,vbWhite,vbBlack"});
    }
    CellClipboard clipboard{editor};
};

TEST_F(Clipboard, CopiesRectangles)
{
    parameters();
    grid.setText(2, 2, "two\nlines\tand a tab");
    const std::pair<platform::CellRange, const char*> rows[] = {
        {{1, 1}, "1.0"}, {{1, 1, 2, 2}, "1.0\t\noff\ttwo lines and a tab"}, {{4, 1, 6, 1}, "5\ntext\n3"}};
    for (const auto& [range, text] : rows)
        EXPECT_EQ(clipboard.copy(range), text);
}

TEST_F(Clipboard, PastesLikeEntries)
{
    const std::tuple<const char*, platform::CellRange, const char*, const char*, int> rows[] = {
        {"OtherProgramsLines", {1, 1}, "2.5\r\non\r\n", "A=2.5 C=on LO=0 HI=5", 0},
        {"ColumnsBesideAreNoParameters", {1, 1}, "2.5\tx\ty", "A=2.5 C=off LO=0 HI=5", 0},
        {"OutsideAndUnknownChoice", {1, 1}, "9.1\nmaybe", "A=1.0 C=off LO=0 HI=5", 2},
        {"ClosedCells", {5, 1}, "other\n4", "A=1.0 C=off LO=0 HI=5", 2},
        {"OneFillsTheRange", {3, 1, 4, 1}, "4", "A=1.0 C=off LO=4 HI=4", 0},
        {"OrderOfLimits", {3, 1}, "50\n60", "A=1.0 C=off LO=50 HI=60", 0},
        {"BeyondTheGrid", {30, 1}, "1\n2\n3", "A=1.0 C=off LO=0 HI=5", 0},
    };
    for (const auto& [name, range, text, after, refused] : rows) {
        parameters();
        record.texts.clear();
        const Everything before = everything();
        EXPECT_EQ(clipboard.paste(range, text), refused) << name;
        EXPECT_EQ(shown("A C LO HI"), after) << name;
        EXPECT_EQ(record.texts.size(), refused > 0 ? 1 : 0) << name;
        EXPECT_EQ(record.texts.join(u' ').left(4), refused > 0 ? QString("%1 of").arg(refused) : "") << name;
        editor.undo();
        EXPECT_TRUE(everything() == before) << "one paste is one step: " << name;
    }
}

// How each changed parameter came to its value, undone with the change.
TEST_F(Clipboard, ChangesSayWhatCausedThem)
{
    shipped("KX410");
    const auto causes = [this] {
        QStringList list;
        for (const auto& each : kx.items()) {
            if (each->cause.kind != ChangeCause::Kind::None)
                list << each->Key() + u'=' + QString::number(static_cast<int>(each->cause.kind)) + each->cause.tag;
        }
        return list.join(u' ');
    };
    const auto at = [this](const char* tag) { return std::pair(item(tag).Col(), item(tag).Row()); };
    const auto [col, row] = at("VQSV1");
    EXPECT_TRUE(editor.checkCell(col, row, true, "50.0"));
    EXPECT_EQ(causes(), u"VQSV1=1");
    clipboard.paste({row, col}, "60.0");
    EXPECT_EQ(causes(), u"VQSV1=3");
    const auto [actionCol, actionRow] = at("PIDONOF");
    editor.changeCombo(actionCol, actionRow, 1);
    EXPECT_TRUE(causes().startsWith(u"VQSV1=3 ")) << qPrintable(causes());
    EXPECT_TRUE(causes().contains(u"PIDONOF=2") && causes().contains(u"=5PIDONOF")) << qPrintable(causes());
    editor.undo();
    editor.undo();
    EXPECT_EQ(causes(), u"VQSV1=1");
    EXPECT_EQ(editor.enterSet({{"VQSV1", "700"}, {"VQSV2", "99999"}, {"PIDONOF", item("PIDONOF").Data()}}),
              QStringList{"VQSV2"});
    EXPECT_EQ(causes(), u"VQSV1=4");
    editor.undo();
    EXPECT_EQ(causes(), u"VQSV1=1") << "one step";
}

// The decimal point comes last in the block, and all values are read with it; one of them looks as it did.
TEST_F(Clipboard, SettingsOfABlockComeFirst)
{
    screen({"A|Data|0|DOTSVDOT,-9,9,<=,<=", "B|Data|5|DOTSVDOT,-9,9,<=,<=",
            "SVDOT|Combo|0||ComboStrings=0vbTab1vbTab3\nComboDatas=0vbTab1vbTab3"});
    grid.setLocked(3, 1, false);
    EXPECT_EQ(clipboard.paste({1, 1}, "1.234\n5\n3"), 0);
    EXPECT_EQ(shown("A B SVDOT"), "A=1.234 B=5.000 SVDOT=3");
    EXPECT_EQ(item("B").Data(), u"5000");
}

TEST_F(Clipboard, CopyAndPasteOfAllChangesNothing)
{
    shipped("KX910");
    const QString all = clipboard.copy({1, 1, grid.maxRows(), grid.maxCols()});
    EXPECT_EQ(clipboard.paste({1, 1}, all), 0);
    EXPECT_EQ(marked(), "");
}

using Hint = EditorFixture;

TEST_F(Hint, TellsLimitsMeaningOrWhyNot)
{
    shipped("KX910");
    start("PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=1000 PQKAL1=5");
    const std::pair<const char*, const char*> rows[] = {
        // %1: the parameter's name
        {"VQSV1", "0.0 <= %1 <= 100.0"},
        {"VQOH1", "0.0 < %1 <= 105.0"},
        {"SWQCF", "%1: locked, a voltage or current input has no temperature unit"},
        {"VQAL1", "%1: locked, the alarm type does not use it"},
        {"PQRNO", "%1: double-click or press Enter to choose; written at once"},
        {"VQPV", "%1: shown only, cannot be changed"},
    };
    const auto hintOf = [this](const char* tag) {
        const clsData& one = item(tag);
        return cellHint(kx, one.Col(), one.Row(), library.translation());
    };
    for (const auto& [tag, hint] : rows)
        EXPECT_EQ(hintOf(tag), QString(hint).arg(item(tag).DataName()));
    EXPECT_EQ(cellHint(kx, 1, 1, library.translation()), QString()) << "a label";
    EXPECT_EQ(hintOf("PIDONOF"), item("PIDONOF").DataName() + ": " + cell("PIDONOF").comboList.join(" / "));
    start("PQRNO=1");
    EXPECT_TRUE(hintOf("VQLIL").endsWith(": locked, the input range fixes it"));
}

} // namespace
