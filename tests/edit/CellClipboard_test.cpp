#include "CellClipboard.h"

#include "CellHint.h"
#include "CellSpeech.h"
#include "EditorFixture.h"
#include "Table.h"

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

TEST_F(Clipboard, NamesWhatWasNotTaken)
{
    parameters();
    EXPECT_EQ(clipboard.paste({1, 1}, "99\nmaybe\n1,234\n１２\nother\n4"), 5);
    EXPECT_EQ(shown("A C LO HI"), "A=1.0 C=off LO=0 HI=12");
    EXPECT_EQ(
        record.texts.takeFirst().section('\n', 1).toStdString(),
        "A \"99\": It is outside the setting range.[ 0 <= Input range <= 9 ]\nC \"maybe\": no choice of its list\n"
        "LO \"1,234\": 1,234 may have a decimal comma or a comma between thousands: write a point, or no comma.\n"
        "T \"other\": shown only, cannot be changed\nRO \"4\": shown only, cannot be changed");
    shipped("KX410");
    const int refused = clipboard.paste({1, 1, 48, 13}, QString(50, 'x'));
    const QStringList lines = record.texts.takeFirst().split('\n');
    EXPECT_TRUE(lines.size() == 12 && lines[1].contains(" \"" + QString(40, 'x') + "…\"")) << "named up to ten";
    EXPECT_EQ(lines.last(), QString("and %1 more").arg(refused - 10));
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
    const auto hintOf = [this](const QString& tag) {
        const clsData& one = item(tag);
        return cellHint(kx, one.Col(), one.Row(), library.translation());
    };
    for (const QStringList& row : tableRows("edit/hints.tsv"))
        EXPECT_EQ(hintOf(row[0]), row[1].arg(item(row[0]).DataName()));
    EXPECT_EQ(cellHint(kx, 1, 1, library.translation()), QString()) << "a label";
    EXPECT_EQ(hintOf("PIDONOF"), item("PIDONOF").DataName() + ": " + cell("PIDONOF").comboList.join(" / "));
    EXPECT_EQ(hintOf("VQI1"), "0 <= " + item("VQI1").DataName() + " <= 3600 s");
    start("PQRNO=1");
    EXPECT_TRUE(hintOf("VQSV1").endsWith(QStringLiteral(" °C"))) << qPrintable(hintOf("VQSV1"));
    EXPECT_TRUE(hintOf("VQLIL").endsWith(": locked by the input range"));
}

TEST_F(Hint, IsSpokenWithBlockValueAndState)
{
    shipped("KX410");
    start("PQRNO=1 SVDOT=1 VQSV1=1200 VQSVL=-1000 VQSVH=4000 VQSVUP=150 VQOL1=0 VQOH1=900 VQI1=120");
    enter("VQSV1=130");
    item("VQI1").setKnown(false);
    item("VQD1").sendMark = SendMark::Failed;
    kx.refreshSpread(false, nullptr);
    for (const QStringList& row : tableRows("edit/spoken.tsv")) {
        const auto spoken = spokenCell(kx, item(row[0]).Col(), item(row[0]).Row(), library.translation());
        EXPECT_EQ(QStringList({spoken.name, spoken.description}), row.mid(1));
    }
    const auto button = spokenCell(kx, 4, 14, library.translation());
    const auto label = spokenCell(kx, 2, 15, library.translation());
    EXPECT_EQ(QStringList({button.name, button.description, label.name, label.description}),
              QStringList({"Set values, Write", "Write this block", "", ""}));
}

} // namespace
