#include "EditorFixture.h"
#include "Table.h"

namespace {

// Block 1: button in cell 20,1. Block 2: no button, its corner is the cell of the item STEP.
class Clicks : public EditorFixture
{
protected:
    void parameters(const char* unit = "0")
    {
        put(definition(QStringLiteral("MultiSelect.ini")), "[IC]\nData1=0,1\nName1=K\nName2=Test\n"
                                                           "[IK]\nData1=0,1\nName1=Kelvin\nName2=Test\n"
                                                           "[AL]\nData1=0,1\nName1=High\nName2=Test\n");
        screen({QStringLiteral("RUN|Bit|0||BitData=3,2\nBitCaptionOn=Run\nBitCaptionOff=Stop"),
                QStringLiteral("SWQCF|Bit|%1||BlockNo=1").arg(QLatin1String(unit)),
                QStringLiteral("STEP|Bit|1||BitCaptionOn=Yes\nBitCaptionOff=No"),
                QStringLiteral("PQRNO|Input|1||InputCSelectSection=IC\nInputKSelectSection=IK"),
                QStringLiteral("PQKAL1|Multi|1||MultiSelectSection=AL"), QStringLiteral("A|Data|5"),
                QStringLiteral("SHOWN|Bit|0||CommWriteSection=")},
               "[BlockInfo1]\nName=Basis\nButtonCaption=Write\nButtonData=20,1,vbRed,vbBlack\n"
               "CellData=18,1,20,2,False,vbBlack\n"
               "[BlockInfo2]\nName=Steps\nCellData=3,1,3,2,False,vbBlack\n");
        shell.calls.clear();
        record.texts.clear();
        record.messages.clear();
    }
};

TEST_F(Clicks, SwitchWriteAndOpen)
{
    for (const QStringList& row : tableRows("edit/clicks.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        parameters(qPrintable(row[3]));
        const QStringList before = logged("Event.log");
        if (row[1] == u"1")
            editor.openSelect(1, row[2].toInt());
        else
            editor.clickCell(1, row[2].toInt());
        EXPECT_EQ(shell.calls.join(u','), row[4]);
        EXPECT_EQ(logged("Event.log").mid(before.size()).join(u','), row[5]);
        EXPECT_EQ(shown(QStringLiteral("RUN SWQCF STEP")), row[6].toStdString());
        EXPECT_TRUE(record.texts.isEmpty());
    }
}

TEST_F(Clicks, NeedUpToDateData)
{
    struct
    {
        const char* name;
        MainState state;
        bool busy;
        int messages;
    } const rows[] = {{"Busy", MainState::UpToDate, true, 0}, {"NoConnection", MainState::NoConnection, false, 2}};
    for (const auto& row : rows) {
        parameters();
        shell.stateNow = row.state;
        shell.busy = row.busy;
        const Everything before = everything();
        editor.clickCell(1, 1);
        editor.openSelect(1, 4);
        editor.openSelect(1, 6); // nothing to open, nothing to tell
        EXPECT_TRUE(everything() == before) << row.name;
        EXPECT_TRUE(shell.calls.isEmpty()) << row.name;
        EXPECT_EQ(record.texts.size(), row.messages) << row.name;
        for (const Message& message : record.messages) {
            EXPECT_EQ(message.prompt, u"Please acquire the up-to-date data from the equipment.");
            EXPECT_EQ(message.style, MessageStyle::kCritical);
        }
    }
}

TEST_F(Clicks, AskWhereTheSettingsSaySo)
{
    struct
    {
        bool doubleClick;
        bool asksUnit;
        bool asksInput;
        int answer;
        int asked;
        const char* calls;
    } const rows[] = {
        {false, true, false, MessageResult::kYes, 1, "block 1 then PQRNO"},
        {false, true, false, MessageResult::kNo, 1, ""},
        {true, false, true, MessageResult::kYes, 1, "select PQRNO IC"},
        {true, false, true, MessageResult::kNo, 1, ""},
    };
    for (const auto& row : rows) {
        parameters();
        settings.m_bViewUnitConf = row.asksUnit;
        settings.m_bViewInputConf = row.asksInput;
        record.answer = row.answer;
        if (row.doubleClick)
            editor.openSelect(1, 4);
        else
            editor.clickCell(1, 2);
        EXPECT_EQ(shell.calls.join(u',').toStdString(), row.calls);
        ASSERT_EQ(record.messages.size(), row.asked);
        if (row.asked > 0) {
            EXPECT_EQ(record.messages[0].prompt, u"This Parameter change sure?");
            EXPECT_EQ(record.messages[0].style, MessageStyle::kYesNo + MessageStyle::kCritical);
            EXPECT_EQ(record.messages[0].title, QString());
        }
    }
}

// Off-line nothing is written: the range is chosen again from the table of the new unit.
TEST_F(Clicks, UnitOffLineOpensTheInputTable)
{
    parameters();
    settings.m_bComm = true;
    shell.stateNow = MainState::NoConnection;
    shell.inDialog = [this] { EXPECT_EQ(kx.unitSwitch(), 1); };
    const Everything before = everything();
    editor.clickCell(1, 2);
    EXPECT_EQ(shell.calls.join(u','), u"select PQRNO IK");
    EXPECT_EQ(shown(QStringLiteral("PQRNO")), "PQRNO=Kelvin") << "by the new unit";
    editor.undo();
    EXPECT_TRUE(everything() == before) << "the unit switch too";
}

TEST_F(Clicks, ChosenValuesAreOneStep)
{
    parameters();
    shell.sends = false;
    shell.inDialog = [this] {
        editor.setData(QStringLiteral("PQKAL1"), QStringLiteral("2"), true);
        editor.setVData(QStringLiteral("A"), QStringLiteral("50"), true);
        editor.undo(); // not while the dialog is open
    };
    const Everything before = everything();
    editor.openSelect(1, 5);
    EXPECT_EQ(shown(QStringLiteral("A")), "A=50");
    EXPECT_EQ(marked(), "A PQKAL1");
    editor.undo();
    EXPECT_TRUE(everything() == before);
    EXPECT_FALSE(editor.canUndo());
}

} // namespace
