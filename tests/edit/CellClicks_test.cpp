#include "EditorFixture.h"
#include "Table.h"

namespace {

// Block 1: button in cell 20,1. Block 2: no button, its corner is the cell of the item STEP.
class Clicks : public EditorFixture
{
protected:
    void parameters(const char* unit = "0")
    {
        put(definition("MultiSelect.ini"), "[IC]\nData1=0,1\nName1=K\nName2=Test\n"
                                           "[IK]\nData1=0,1\nName1=Kelvin\nName2=Test\n"
                                           "[AL]\nData1=0,1\nName1=High\nName2=Test\n");
        screen({"RUN|Bit|0||BitData=3,2\nBitCaptionOn=Run\nBitCaptionOff=Stop",
                QString("SWQCF|Bit|%1||BlockNo=1").arg(unit), "STEP|Bit|1||BitCaptionOn=Yes\nBitCaptionOff=No",
                "PQRNO|Input|1||InputCSelectSection=IC\nInputKSelectSection=IK",
                "PQKAL1|Multi|1||MultiSelectSection=AL", "A|Data|5", "SHOWN|Bit|0||CommWriteSection="},
               "[BlockInfo1]\nName=Basis\nButtonCaption=Write\nButtonData=20,1,vbRed,vbBlack\n"
               "CellData=18,1,20,2,False,vbBlack\n"
               "[BlockInfo2]\nName=Steps\nCellData=3,1,3,2,False,vbBlack\n");
        shell.calls.clear();
        record = {};
    }
};

TEST_F(Clicks, SwitchWriteAndOpen)
{
    for (const QStringList& row : tableRows("edit/clicks.tsv")) {
        SCOPED_TRACE(qPrintable(row[0]));
        parameters(qPrintable(row[3]));
        eventLog.lines.clear();
        if (row[1] == u"1")
            editor.openSelect(1, row[2].toInt());
        else
            editor.clickCell(1, row[2].toInt());
        EXPECT_EQ(shell.calls.join(u','), row[4]);
        EXPECT_EQ(eventLog.lines.join(u','), row[5]);
        EXPECT_EQ(shown("RUN SWQCF STEP"), row[6].toStdString());
        EXPECT_TRUE(record.texts.isEmpty());
    }
}

TEST_F(Clicks, NeedUpToDateData)
{
    parameters();
    ASSERT_TRUE(editor.enterSet({{"A", "6"}}).isEmpty());
    const Everything before = everything();
    for (const auto& [busy, messagesShown] : {std::pair{true, 0}, {false, 4}}) {
        shell.stateNow = busy ? MainState::UpToDate : MainState::NoConnection;
        shell.busy = busy;
        if (busy) { // what goes out stays as it was chosen
            editor.enterSet({{"A", "7"}});
            editor.undo();
        }
        editor.clickCell(1, 1);
        editor.openSelect(1, 4);
        editor.openSelect(1, 6); // nothing to open, nothing to tell
        editor.writeItem(1, 6);
        editor.writeBlockOf(1, 2);
        EXPECT_TRUE(everything() == before) << busy;
        EXPECT_TRUE(shell.calls.isEmpty()) << busy;
        EXPECT_EQ(record.texts.size(), messagesShown) << busy;
    }
    shell.stateNow = MainState::UpToDate;
    editor.writeItem(1, 6);
    editor.writeBlockOf(1, 2);
    editor.writeBlockOf(1, 6); // of no block
    EXPECT_EQ(shell.calls.join(u','), u"one A,block 1 and back");
    for (const Message& message : record.messages) {
        EXPECT_EQ(message.prompt, "Please acquire the up-to-date data from the equipment.");
        EXPECT_EQ(message.style, MessageStyle::kCritical);
    }
}

TEST_F(Clicks, AskWhereTheSettingsSaySo)
{
    const std::tuple<bool, int, const char*> rows[] = {{false, MessageResult::kYes, "block 1 then PQRNO"},
                                                       {false, MessageResult::kNo, ""},
                                                       {true, MessageResult::kYes, "select PQRNO IC"},
                                                       {true, MessageResult::kNo, ""}};
    for (const auto& [isInput, answer, calls] : rows) {
        parameters();
        settings.m_bViewUnitConf = !isInput;
        settings.m_bViewInputConf = isInput;
        record.answer = answer;
        if (isInput)
            editor.openSelect(1, 4);
        else
            editor.clickCell(1, 2);
        EXPECT_EQ(shell.calls.join(u','), calls);
        ASSERT_EQ(record.messages.size(), 1);
        EXPECT_EQ(record.messages[0].prompt, "This Parameter change sure?");
        EXPECT_EQ(record.messages[0].style, MessageStyle::kYesNo + MessageStyle::kCritical);
        EXPECT_EQ(record.messages[0].title, "");
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
    EXPECT_EQ(shown("PQRNO"), "PQRNO=K") << "by the new unit";
    editor.undo();
    EXPECT_TRUE(everything() == before) << "the unit switch too";
}

TEST_F(Clicks, ChosenValuesAreOneStep)
{
    parameters();
    shell.sends = false;
    shell.inDialog = [this] {
        editor.setData("PQKAL1", "2", true);
        editor.setVData("A", "50", true);
        editor.undo(); // not while the dialog is open
    };
    const Everything before = everything();
    editor.openSelect(1, 5);
    EXPECT_EQ(shown("A"), "A=50");
    EXPECT_EQ(marked(), "A PQKAL1");
    editor.undo();
    EXPECT_TRUE(everything() == before);
    EXPECT_FALSE(editor.canUndo());
}

} // namespace
