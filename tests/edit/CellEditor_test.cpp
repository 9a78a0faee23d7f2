#include "EditorFixture.h"
#include "Table.h"

#include <QSignalSpy>

namespace {

using Editor = EditorFixture;

// Limits, signs and names as a definition may give them; what is told about a value that is refused.
TEST_F(Editor, HoldsEntriesAgainstLimits)
{
    for (const QStringList& row : tableRows("edit/entries.tsv")) {
        record = {};
        screen({QString("A|Data|7|%1|%2").arg(row[0], row[1]), "OTHER|Data|50|0,0,99,<=,<="});
        const bool taken = enter("A=" + row[2]);
        EXPECT_EQ(taken, row[3].isEmpty()) << qPrintable(row.join(u' '));
        EXPECT_EQ(record.texts.join(u'\n').toStdString(), row[3].toStdString());
        EXPECT_EQ(item("A").Data() == u"7", !taken);
        EXPECT_EQ(cell("A").text, row.size() > 4 ? row[4] : item("A").VData());
        if (!taken) {
            EXPECT_EQ(record.messages[0].style, MessageStyle::kInformation);
            EXPECT_EQ(record.messages[0].title, u"KX");
        }
    }
}

TEST_F(Editor, ClosedCellsTakeNothing)
{
    screen({"LOCKED|Data|7", "NOWRITE|Data|7||CommWriteSection=", "NOIMAGE|Data|7||CommWriteSection=Other",
            "CHOICE|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1\nCommWriteSection=", "TEXT|String|7",
            "OPEN|Data|7"});
    grid.setLocked(1, 1, true);
    const Everything before = everything();
    for (const char* entry : {"LOCKED=5", "NOWRITE=5", "NOIMAGE=5", "CHOICE#1"})
        EXPECT_FALSE(enter(entry)) << entry;
    EXPECT_FALSE(editor.checkCell(9, 9, true));
    EXPECT_TRUE(everything() == before);
    EXPECT_TRUE(record.texts.isEmpty());
    EXPECT_FALSE(editor.canUndo());
    EXPECT_FALSE(grid.flags(grid.index(1, 0)).testFlag(Qt::ItemIsEditable)) << "not even by a double click";
    EXPECT_TRUE(grid.flags(grid.index(5, 0)).testFlag(Qt::ItemIsEditable));
}

TEST_F(Editor, WritesEventLines)
{
    screen({"A|Data|70|1,0,99,<=,<=", "C|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1"});
    for (const char* entry : {"A=5", "A=100", "C#1"})
        enter(entry);
    editor.setComboDropped(true);
    EXPECT_FALSE(enter("C#0")) << "the list is still open";
    EXPECT_EQ(eventLog.lines, QStringList({"A[1-1]=70Change", "A[1-1]=50Change", "C[1-2]=0Change", "C[1-2]=1Changed"}));
    EXPECT_EQ(shown("A C"), "A=5.0 C=b");
    EXPECT_EQ(marked(), "A C");
}

TEST_F(Editor, SetsByTag)
{
    screen(
        {"ABC3|Data|1|1,0,9,<=,<=", "DEF10|Data|1|0,0,9,<=,<=", "HID|Data|1|0,0,9,<=,<=|Option=0=KX41\nVisible=False",
         "C|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1"});
    editor.setData("ABC", "25", false);
    editor.setData("DEF", "5", false);
    editor.setData("HID", "5", true);
    editor.setData("C", "1", true);
    EXPECT_EQ(shown("ABC3 DEF10 HID C"), "ABC3=2.5 DEF10=1 HID=5 C=b");
    EXPECT_EQ(marked(), "ABC3 C HID");
    editor.setData("ABC3", "91", true);
    EXPECT_EQ(shown("ABC3"), "ABC3=2.5") << "what the check refuses is put back";
    editor.setVData("ABC3", "9.1", true);
    EXPECT_EQ(shown("ABC3"), "ABC3=2.5");
    EXPECT_EQ(record.texts.size(), 2);
    editor.setEntry({{"ABC3", "30", false}});
    editor.setData("ABC3", "40", true);
    editor.setData("ABC3", "91", true);
    EXPECT_EQ(shown("ABC3"), "ABC3=4.0") << "as it was before this entry, not an earlier one";
    editor.setEntry({{"ABC3", "92", false}});
    EXPECT_EQ(shown("ABC3"), "ABC3=4.0") << "before all that the entry sets";
    editor.setVData("ABC3", "9.1", false);
    EXPECT_EQ(shown("ABC3"), "ABC3=9.1") << "not checked";
    EXPECT_EQ(editor.getDataByTag("ABC3"), u"91");
    EXPECT_EQ(editor.getDataByTag("NONE"), QString());
    EXPECT_EQ(editor.getDataTempMax(), 4);
    EXPECT_EQ(editor.getDataTag(2), u"DEF10");
    EXPECT_TRUE(shell.calls.isEmpty());
}

// The input range goes out at once; what has gone out cannot be undone.
TEST_F(Editor, SendsTheInputRange)
{
    shipped("KX410");
    for (const bool sends : {false, true}) {
        shell.calls.clear();
        shell.sends = sends;
        const QString limitBefore = item("RANGEH").Data();
        editor.setData("PQRNO", sends ? "1" : "20", false);
        EXPECT_EQ(shell.calls.join(u','), u"one PQRNO");
        EXPECT_EQ(cell("VQLIL").locked, sends) << "locks follow the range";
        EXPECT_EQ(editor.canUndo(), !sends);
        editor.undo();
        EXPECT_EQ(item("RANGEH").Data() == limitBefore, !sends) << "items without a cell come back too";
    }
}

// What is read or written ends the steps of undo; what the action has changed is shown all the same.
TEST_F(Editor, AChangeThatIsSentIsShownAtOnce)
{
    for (const bool sends : {true, false}) {
        shipped("KX410");
        start("PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=1000 VQSV1=500 VQSV2=900");
        shell.sends = sends;
        shell.inWrite = [&] {
            editor.clear();
            item("PQRNO").Edit = sends ? 3 : EditState::kChanged;
        };
        editor.setData("PQRNO", "1", true);
        EXPECT_TRUE(cell("VQLIL").locked);
        EXPECT_EQ(shown("VQSV2"), "VQSV2=" + item("VQSV2").VData().toStdString());
        EXPECT_EQ(cell("PQRNO").font.bold, !sends);
        editor.setData("PQRNO", "1", true);
        EXPECT_EQ(cell("PQRNO").font.bold, !sends) << "chosen again";
    }
}

// How a changed value is shown depends on its limits: on those of its definition, and on those of its tag.
TEST_F(Editor, AChangedLimitShowsWhatItLimits)
{
    screen({"HI|Data|5|0,0,99,<=,<=", "A|Data|1|0,0,TAGHI,<=,<=", "VQOL1|Data|1|0,0,99,<=,<=",
            "VQOH1|Data|1|0,0,99,<=,<=", "B|Data|1|0,0,99,<=,<="});
    for (const char* entry : {"A=2", "VQOH1=2", "B=2"})
        enter(entry);
    for (const int row : {2, 4, 5})
        grid.setText(row, 1, "old");
    enter("HI=6");
    EXPECT_EQ(shown("A VQOH1 B"), "A=2 VQOH1=old B=old");
    enter("VQOL1=3");
    EXPECT_EQ(shown("A VQOH1 B"), "A=2 VQOH1=2 B=old");
}

TEST_F(Editor, TheSameValueAgainMarksNothing)
{
    screen({"A|Data|70|1,0,99,<=,<=", "C|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1"});
    item("A").setData("70");
    item("C").setData("0");
    for (const char* entry : {"A=7", "A=7,0", "A=7.04", "C#0"})
        EXPECT_TRUE(enter(entry)) << entry;
    editor.setEntry({{"A", "70", false}});
    EXPECT_TRUE(marked().empty() && !editor.canUndo());
    item("A").setKnown(false);
    enter("A=7");
    EXPECT_EQ(marked(), "A") << "nobody knew it";
}

using History = EditorFixture;

// The cell to be looked at is the one that was entered, not those that followed, or the first of several.
TEST_F(History, ShowsWhatItRestores)
{
    shipped("KX410");
    start("PIDONOF=0 VQSV1=500 VQSV2=600");
    QStringList looks;
    QObject::connect(&editor, &CellEditor::restored,
                     [&](int col, int row) { looks << kx.getDataByRC(row, col)->Key(); });
    enter("PIDONOF#1");
    editor.setEntry({{"VQSV2", "610", false}, {"VQSV1", "510", false}});
    editor.undo(), editor.undo(), editor.redo(), editor.redo();
    EXPECT_EQ(looks, (QStringList{"VQSV1", "PIDONOF", "PIDONOF", "VQSV1"}));
}

TEST_F(History, EndsWithTheModel)
{
    screen({"A|Data|1|0,0,9,<=,<="});
    enter("A=2");
    screen({"B|Data|1|0,0,9,<=,<="});
    EXPECT_FALSE(editor.canUndo());
    {
        const CellEditor::Action action(editor);
        screen({"C|Data|1|0,0,9,<=,<="}); // as a dialog may do before it returns
    }
    EXPECT_FALSE(editor.canUndo());
    EXPECT_TRUE(enter("C=5"));
    editor.undo();
    EXPECT_EQ(item("C").Data(), u"1");
}

TEST_F(History, IsBounded)
{
    screen({"A|Data|1|0,0,9999,<=,<="});
    for (size_t i = 0; i < EditHistory::kMaxSteps + 5; ++i)
        enter(QString("A=%1").arg(i + 2));
    const QSignalSpy changes(&editor, &CellEditor::historyChanged);
    while (editor.canUndo())
        editor.undo();
    EXPECT_EQ(changes.size(), EditHistory::kMaxSteps);
    EXPECT_EQ(item("A").Data(), u"6");
}

// The choice that a cell shows is taken over; a cell that shows none takes the item's.
TEST_F(Editor, ComboCellsAreCheckedByTheirText)
{
    screen({"C|Combo|7||ComboStrings=avbTabbvbTabb\nComboDatas=5vbTab6vbTab7"});
    for (const auto& [text, stored] : {std::pair{"b", "7"}, {"a", "5"}, {"", "5"}, {"other", "5"}}) {
        grid.setText(1, 1, text);
        editor.checkCell(1, 1);
        EXPECT_EQ(item("C").Data(), stored) << text;
        EXPECT_EQ(cell("C").text, item("C").VData());
    }
}

} // namespace
