#include "EditorFixture.h"

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

struct ClickCase
{
    const char* name;
    bool doubleClick;
    int row;
    const char* unit = "0";
    const char* calls;
    const char* logged = "";
    const char* shown = "RUN=Stop SWQCF=Off STEP=Yes";
};

class Click : public Clicks, public ::testing::WithParamInterface<ClickCase>
{};

TEST_P(Click, SwitchesWritesAndOpens)
{
    const ClickCase& row = GetParam();
    parameters(row.unit);
    const QStringList before = logged("Event.log");
    if (row.doubleClick)
        editor.openSelect(1, row.row);
    else
        editor.clickCell(1, row.row);
    EXPECT_EQ(shell.calls.join(u',').toStdString(), row.calls);
    EXPECT_EQ(logged("Event.log").mid(before.size()).join(u',').toStdString(), row.logged);
    EXPECT_EQ(shown(QStringLiteral("RUN SWQCF STEP")), row.shown);
    EXPECT_TRUE(record.texts.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Cells, Click,
    ::testing::Values(ClickCase{"Bit", false, 1, "0", "", "RUN[1-1]=0Click", "RUN=Run SWQCF=Off STEP=Yes"},
                      ClickCase{"Unit", false, 2, "0", "block 1,one PQRNO", "SWQCF[1-2]=0Click,Basis[1-2]=1BlockClick",
                                "RUN=Stop SWQCF=On STEP=Yes"},
                      ClickCase{"UnitBack", false, 2, "1", "block 1,one PQRNO",
                                "SWQCF[1-2]=1Click,Basis[1-2]=1BlockClick", "RUN=Stop SWQCF=Off STEP=Yes"},
                      ClickCase{"BitThatIsABlocksCorner", false, 3, "0", "block 2",
                                "STEP[1-3]=1Click,Steps[1-3]=2BlockClick", "RUN=Stop SWQCF=Off STEP=No"},
                      ClickCase{"BlockButton", false, 20, "0", "block 1 and back", "Basis[1-20]=1BlockClick"},
                      ClickCase{"Label", false, 25, "0", ""}, ClickCase{"BitThatIsOnlyShown", false, 7, "0", ""},
                      ClickCase{"InputCelsius", true, 4, "0", "select PQRNO IC", "PQRNO[1-4]=1InputSelectCOpen"},
                      ClickCase{"InputKelvin", true, 4, "1", "select PQRNO IK", "PQRNO[1-4]=1InputSelectKOpen",
                                "RUN=Stop SWQCF=On STEP=Yes"},
                      ClickCase{"InputOfNoUnit", true, 4, "2", ""},
                      ClickCase{"Multi", true, 5, "0", "select PQKAL1 AL", "PQKAL1[1-5]=1MultiSelectOpen"},
                      ClickCase{"NoTable", true, 6, "0", ""}, ClickCase{"NothingThere", true, 25, "0", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Clicks, NeedUpToDateData)
{
    struct
    {
        const char* name;
        MainState state;
        bool busy;
        int messages;
    } const rows[] = {{"Busy", MainState::UpToDate, true, 0},
                      {"Confirmed", MainState::Confirmed, false, 2},
                      {"NoConnection", MainState::NoConnection, false, 2}};
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
        {false, true, false, MessageResult::kYes, 1, "block 1,one PQRNO"},
        {false, true, false, MessageResult::kNo, 1, ""},
        {false, false, true, MessageResult::kNo, 0, "block 1,one PQRNO"},
        {true, false, true, MessageResult::kYes, 1, "select PQRNO IC"},
        {true, false, true, MessageResult::kNo, 1, ""},
        {true, true, false, MessageResult::kNo, 0, "select PQRNO IC"},
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
        }
    }
}

// Off-line nothing is written: the range is chosen again from the table of the new unit.
TEST_F(Clicks, UnitOffLineOpensTheInputTable)
{
    parameters();
    settings.m_bComm = true;
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

TEST_F(Clicks, WhatWasWrittenIsNotUndone)
{
    parameters();
    enter(QStringLiteral("A=6"));
    EXPECT_TRUE(editor.canUndo());
    shell.sends = false;
    editor.clickCell(1, 20);
    EXPECT_TRUE(editor.canUndo());
    shell.sends = true;
    editor.clickCell(1, 20);
    EXPECT_FALSE(editor.canUndo());
}

} // namespace
