#include "EditorFixture.h"
#include "Table.h"

#include <QSignalSpy>

namespace {

class Editor : public EditorFixture
{};

// Limits, signs and names as a definition may give them; what is told about a value that is refused.
TEST_F(Editor, HoldsEntriesAgainstLimits)
{
    for (const QStringList& row : tableRows("edit/entries.tsv")) {
        record.texts.clear();
        record.messages.clear();
        screen({QStringLiteral("A|Data|7|%1|%2").arg(row[0], row[1]), QStringLiteral("OTHER|Data|50|0,0,99,<=,<=")});
        const QString before = cell(QStringLiteral("A")).text;
        const bool taken = enter(QStringLiteral("A=") + row[2]);
        EXPECT_EQ(taken, row[3].isEmpty()) << qPrintable(row.join(u' '));
        EXPECT_EQ(record.texts.join(u'\n').toStdString(), row[3].toStdString());
        EXPECT_EQ(item(QStringLiteral("A")).Data() == u"7", !taken);
        EXPECT_EQ(cell(QStringLiteral("A")).text, taken ? item(QStringLiteral("A")).VData() : before);
        if (!taken) {
            EXPECT_EQ(record.messages[0].style, MessageStyle::kInformation);
            EXPECT_EQ(record.messages[0].title, u"KX");
        }
    }
}

TEST_F(Editor, ClosedCellsTakeNothing)
{
    screen({QStringLiteral("LOCKED|Data|7"), QStringLiteral("NOWRITE|Data|7||CommWriteSection="),
            QStringLiteral("NOIMAGE|Data|7||CommWriteSection=Other"),
            QStringLiteral("CHOICE|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1\nCommWriteSection="),
            QStringLiteral("TEXT|String|7"), QStringLiteral("OPEN|Data|7")});
    grid.setLocked(1, 1, true);
    const Everything before = everything();
    for (const char* entry : {"LOCKED=5", "NOWRITE=5", "NOIMAGE=5", "CHOICE#1"})
        EXPECT_FALSE(enter(QLatin1String(entry))) << entry;
    EXPECT_FALSE(editor.checkCell(9, 9, true));
    EXPECT_TRUE(everything() == before);
    EXPECT_TRUE(record.texts.isEmpty());
    EXPECT_FALSE(editor.canUndo());
    EXPECT_FALSE(grid.flags(grid.index(1, 0)).testFlag(Qt::ItemIsEditable)) << "not even by a double click";
    EXPECT_TRUE(grid.flags(grid.index(5, 0)).testFlag(Qt::ItemIsEditable));
}

TEST_F(Editor, WritesEventLines)
{
    screen({QStringLiteral("A|Data|70|1,0,99,<=,<="),
            QStringLiteral("C|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1")});
    enter(QStringLiteral("A=5"));
    enter(QStringLiteral("A=100"));
    enter(QStringLiteral("C#1"));
    editor.setComboDropped(true);
    EXPECT_FALSE(enter(QStringLiteral("C#0"))) << "the list is still open";
    editor.setComboDropped(false);
    EXPECT_EQ(logged("Event.log"), QStringList({QStringLiteral("A[1-1]=70Change"), QStringLiteral("A[1-1]=50Change"),
                                                QStringLiteral("C[1-2]=0Change"), QStringLiteral("C[1-2]=1Changed")}));
    EXPECT_EQ(shown(QStringLiteral("A C")), "A=5.0 C=b");
    EXPECT_EQ(marked(), "A C");
}

TEST_F(Editor, SetsByTag)
{
    screen({QStringLiteral("ABC3|Data|1|1,0,9,<=,<="), QStringLiteral("DEF10|Data|1|0,0,9,<=,<="),
            QStringLiteral("HID|Data|1|0,0,9,<=,<=|Option=0=KX41\nVisible=False"),
            QStringLiteral("C|Combo|0||ComboStrings=avbTabb\nComboDatas=0vbTab1")});
    editor.setData(QStringLiteral("ABC"), QStringLiteral("25"), false);
    editor.setData(QStringLiteral("DEF"), QStringLiteral("5"), false);
    editor.setData(QStringLiteral("HID"), QStringLiteral("5"), true);
    editor.setData(QStringLiteral("C"), QStringLiteral("1"), true);
    EXPECT_EQ(shown(QStringLiteral("ABC3 DEF10 HID C")), "ABC3=2.5 DEF10=1 HID=5 C=b");
    EXPECT_EQ(marked(), "ABC3 C HID");
    editor.setData(QStringLiteral("ABC3"), QStringLiteral("91"), true);
    EXPECT_EQ(shown(QStringLiteral("ABC3")), "ABC3=2.5") << "what the check refuses is put back";
    editor.setVData(QStringLiteral("ABC3"), QStringLiteral("9.1"), true);
    EXPECT_EQ(shown(QStringLiteral("ABC3")), "ABC3=2.5");
    EXPECT_EQ(record.texts.size(), 2);
    editor.setVData(QStringLiteral("ABC3"), QStringLiteral("9.1"), false);
    EXPECT_EQ(shown(QStringLiteral("ABC3")), "ABC3=9.1") << "not checked";
    EXPECT_EQ(editor.getDataByTag(QStringLiteral("ABC3")), u"91");
    EXPECT_EQ(editor.getDataByTag(QStringLiteral("NONE")), QString());
    EXPECT_EQ(editor.getDataTempMax(), 4);
    EXPECT_EQ(editor.getDataTag(2), u"DEF10");
    EXPECT_TRUE(shell.calls.isEmpty());
}

// The input range goes out at once; what has gone out cannot be undone.
TEST_F(Editor, SendsTheInputRange)
{
    shipped(QStringLiteral("KX410"));
    for (const bool sends : {false, true}) {
        shell.calls.clear();
        shell.sends = sends;
        const QString limitBefore = item(QStringLiteral("RANGEH")).Data();
        editor.setData(QStringLiteral("PQRNO"), sends ? QStringLiteral("1") : QStringLiteral("20"), false);
        EXPECT_EQ(shell.calls.join(u','), u"one PQRNO");
        EXPECT_EQ(cell(QStringLiteral("VQLIL")).locked, sends) << "locks follow the range";
        EXPECT_EQ(editor.canUndo(), !sends);
        editor.undo();
        EXPECT_EQ(item(QStringLiteral("RANGEH")).Data() == limitBefore, !sends) << "items without a cell come back too";
    }
}

// What is read or written ends the steps of undo; what the action has changed is shown all the same.
TEST_F(Editor, AChangeThatIsSentIsShownAtOnce)
{
    for (const bool sends : {true, false}) {
        shipped(QStringLiteral("KX410"));
        start(QStringLiteral("PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=1000 VQSV1=500 VQSV2=900"));
        shell.sends = sends;
        shell.inWrite = [&] {
            editor.clear();
            item(QStringLiteral("PQRNO")).Edit = sends ? 3 : EditState::kChanged;
        };
        editor.setData(QStringLiteral("PQRNO"), QStringLiteral("1"), true);
        EXPECT_TRUE(cell(QStringLiteral("VQLIL")).locked);
        EXPECT_EQ(shown(QStringLiteral("VQSV2")), "VQSV2=" + item(QStringLiteral("VQSV2")).VData().toStdString());
        EXPECT_EQ(cell(QStringLiteral("PQRNO")).font.bold, !sends);
        editor.setData(QStringLiteral("PQRNO"), QStringLiteral("1"), true);
        EXPECT_EQ(cell(QStringLiteral("PQRNO")).font.bold, !sends) << "chosen again";
    }
}

// How a changed value is shown depends on its limits: on those of its definition, and on those of its tag.
TEST_F(Editor, AChangedLimitShowsWhatItLimits)
{
    screen({QStringLiteral("HI|Data|5|0,0,99,<=,<="), QStringLiteral("A|Data|1|0,0,TAGHI,<=,<="),
            QStringLiteral("VQOL1|Data|1|0,0,99,<=,<="), QStringLiteral("VQOH1|Data|1|0,0,99,<=,<="),
            QStringLiteral("B|Data|1|0,0,99,<=,<=")});
    for (const char* entry : {"A=2", "VQOH1=2", "B=2"})
        enter(QLatin1String(entry));
    for (const int row : {2, 4, 5})
        grid.setText(row, 1, QStringLiteral("old"));
    enter(QStringLiteral("HI=6"));
    EXPECT_EQ(shown(QStringLiteral("A VQOH1 B")), "A=2 VQOH1=old B=old");
    enter(QStringLiteral("VQOL1=3"));
    EXPECT_EQ(shown(QStringLiteral("A VQOH1 B")), "A=2 VQOH1=2 B=old");
}

class History : public EditorFixture
{};

TEST_F(History, GoesBackAndForthInSteps)
{
    shipped(QStringLiteral("KX410"));
    start(QStringLiteral("PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=1000 VQSV1=500 VQSV2=900"));
    const QStringList entries{QStringLiteral("VQLIH=-50"), QStringLiteral("SVDOT#2"), QStringLiteral("PIDONOF#1"),
                              QStringLiteral("VQLIL=20"), QStringLiteral("VQSV1=9999")};
    std::vector<Everything> states{everything()};
    const QSignalSpy changes(&editor, &CellEditor::historyChanged);
    for (const QString& entry : entries) {
        if (enter(entry))
            states.push_back(everything());
    }
    ASSERT_EQ(states.size(), 5U) << "the last entry is refused and is no step";
    for (size_t i = states.size() - 1; i > 0; --i) {
        EXPECT_TRUE(everything() == states[i]) << i;
        editor.undo();
    }
    EXPECT_TRUE(everything() == states[0]);
    EXPECT_FALSE(editor.canUndo());
    for (size_t i = 1; i < states.size(); ++i) {
        editor.redo();
        EXPECT_TRUE(everything() == states[i]) << i;
    }
    EXPECT_FALSE(editor.canRedo());
    EXPECT_GE(changes.size(), 12);
}

TEST_F(History, EndsWithTheModel)
{
    screen({QStringLiteral("A|Data|1|0,0,9,<=,<=")});
    enter(QStringLiteral("A=2"));
    screen({QStringLiteral("B|Data|1|0,0,9,<=,<=")});
    EXPECT_FALSE(editor.canUndo());
    {
        const CellEditor::Action action(editor);
        screen({QStringLiteral("C|Data|1|0,0,9,<=,<=")}); // as a dialog may do before it returns
    }
    EXPECT_FALSE(editor.canUndo());
    EXPECT_TRUE(enter(QStringLiteral("C=5")));
    editor.undo();
    EXPECT_EQ(item(QStringLiteral("C")).Data(), u"1");
}

TEST_F(History, IsBounded)
{
    screen({QStringLiteral("A|Data|1|0,0,9999,<=,<=")});
    for (size_t i = 0; i < EditHistory::kMaxSteps + 5; ++i)
        enter(QStringLiteral("A=%1").arg(i + 2));
    size_t steps = 0;
    for (; editor.canUndo(); ++steps)
        editor.undo();
    EXPECT_EQ(steps, EditHistory::kMaxSteps);
    EXPECT_EQ(item(QStringLiteral("A")).Data(), u"6");
}

// The choice that a cell shows is taken over; a cell that shows none takes the item's.
TEST_F(Editor, ComboCellsAreCheckedByTheirText)
{
    screen({QStringLiteral("C|Combo|7||ComboStrings=avbTabbvbTabb\nComboDatas=5vbTab6vbTab7")});
    struct
    {
        const char* text;
        const char* stored;
    } const rows[] = {{"b", "7"}, {"a", "5"}, {"", "5"}, {"other", "5"}};
    for (const auto& row : rows) {
        grid.setText(1, 1, QLatin1String(row.text));
        editor.checkCell(1, 1);
        EXPECT_EQ(item(QStringLiteral("C")).Data(), QLatin1String(row.stored)) << row.text;
        EXPECT_EQ(cell(QStringLiteral("C")).text, item(QStringLiteral("C")).VData());
    }
}

} // namespace
