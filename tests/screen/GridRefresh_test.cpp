#include "ItemLimits.h"
#include "RecordingMessages.h"
#include "ScreenFixture.h"

namespace {

class Refresh : public ScreenFixture
{
protected:
    // What the controller answered for the image at this place, counted from its first byte.
    void answer(int image, const QByteArray& bytes)
    {
        kx.ColAdr().at(image).setData(IndexedBytes{1, bytes});
        kx.ColAdr().at(image).markFilled();
    }

    QString text(int row) const { return grid.cell(row, 1).text; }
};

const QByteArray kComm =
    "[Main]\nReadCmd1=Direct,8000,4\n[Single]\nReadCmd1=Direct,9000,4\n[Reg]\nReadCmd1=GetAnalogInput,30001,1\n";

const QByteArray kRead = "DataLen=1\nKXAddress=8000\nCommRaedSection=Main";

TEST_F(Refresh, OnlyWhatTheReplyHoldsIsShown)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"LastWord", "KXAddress=8002\nDataLen=2\nCommRaedSection=Main", "772"},
        {"HalfOutside", "KXAddress=8003\nDataLen=2\nCommRaedSection=Main", ""},
        {"NoAddress", "KXAddress=here\nDataLen=1\nCommRaedSection=Main", ""},
        {"LongText", "KXAddress=8000\nDataLen=99\nCellType=String\nCommRaedSection=Main", "\1\2\3\4"},
        {"BitInAWord", "KXAddress=8001\nDataLen=1\nCellType=Bit\nBitMask=2\nCommRaedSection=Main", "On"},
        {"Register", "DataLen=2\nCommRaedSection=Reg", "-2"},
        {"BitOfARegister", "DataLen=1\nCellType=Bit\nBitMask=1\nCommRaedSection=Reg", ""},
        {"NoSection", "DataLen=2\nDefaultData=7", "7"},
        {"TextWithoutAddress", "DataLen=14\nCellType=String\nCommRaedSection=Main", "\1\2\3\4"},
        {"Single", "KXAddress=9000\nDataLen=4\nDataInfo=2,0,9,<=,<=,0\nCommRaedSection=Single", "1.50"},
    };
    QByteArrayList items;
    for (const auto& [name, keys, shown] : rows)
        items << keys;
    load(screenOf(items), kComm);
    answer(0, QByteArray("\1\2\3\4", 4));
    answer(2, QByteArray::fromHex("43160000"));
    kx.ColAdr().at(1).setInteger(QString(), -2);
    kx.ColAdr().at(1).markFilled();
    kx.refreshSpread(true, nullptr);
    int n = 0;
    for (const auto& [name, keys, shown] : rows)
        EXPECT_EQ(text(++n), shown) << name;
    EXPECT_FALSE(grid.cell(2, 1).toolTip.isEmpty()) << "why it is empty";
}

TEST_F(Refresh, AChangedCellSaysWhatTheControllerHolds)
{
    load(screenOf({"Tag=A\nKXAddress=8000\nDataLen=2\nDataInfo=1,0,99,<=,<=,0",
                   "Tag=B\nKXAddress=8002\nDataLen=1\nCellType=Bit\nBitMask=1"},
                  "CommRaedSection=Main\nCommWriteSection=Main"),
         kComm + "WriteCmdMax=1\n");
    put(definition("MComm.ini"), "[Main]\nReadCmd1=Direct,8000,4\nWriteCmdMax=1\nWriteCmd1=Direct,8000,4\n");
    kx.load(1, &library, "KX41000000-10A");
    answer(0, QByteArray("\1\2\1\0", 4));
    kx.refreshSpread(true, nullptr);
    const auto enter = [this](const char* tag, const char* stored) {
        item(tag).setData(stored);
        kx.refreshCell(item(tag));
        return grid.cell(item(tag).Row(), 1).toolTip;
    };
    EXPECT_EQ(enter("A", "300"), u"The controller holds 25.8");
    EXPECT_EQ(enter("B", "0"), u"The controller holds On");
    EXPECT_EQ(enter("A", "999"), u"Outside its limits or no choice: it is not written until it is corrected\n"
                                 u"The controller holds 25.8");
    EXPECT_EQ(enter("A", "258"), QString()) << "nothing would be lost";
}

// The range comes before the unit in the file, and still is looked up in the table of the unit that was read.
TEST_F(Refresh, UnitIsReadBeforeTheRange)
{
    for (const QByteArray row : {"Bit", "Combo"}) {
        SCOPED_TRACE(row.data());
        put(definition("MultiSelect.ini"),
            "[C]\nData1=0,5\nName1=Celsius\nName2=Test\n[K]\nData1=0,5,"
            "77,9,1\nSetTags1=,,tagDHIDDEN,tagDHIDDEN2,tagVHIDDEN3\nName1=Kelvin\nName2=Test\n");
        load(screenOf(
                 {"Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K",
                  "Tag=SWQCF\nBitMask=1\nComboStrings=C,vbTabK\nComboDatas=0vbTab1\nKXAddress=8001\nCellType=" + row,
                  "Tag=HIDDEN\nOption=0=KX41\nVisible=False\nCommRaedSection=",
                  "Tag=HIDDEN2\nOption=0=KX41\nVisible=False\nKXAddress=8002",
                  "Tag=HIDDEN3\nOption=0=KX41\nVisible=False\nCommRaedSection="},
                 kRead),
             kComm);
        answer(0, QByteArray("\5\1\2\0", 4));
        kx.refreshSpread(true, nullptr);
        EXPECT_EQ(kx.unitSwitch(), 1);
        EXPECT_EQ(text(1), u"K");
        EXPECT_EQ(item("HIDDEN").Data(), u"77");
        EXPECT_EQ(item("HIDDEN2").Data(), u"2") << "what was read holds over the table";
        for (const auto& one : kx.items())
            EXPECT_NE(one->Edit, EditState::kChanged) << qPrintable(one->Key());
        answer(0, QByteArray("\5\0\0\0", 4));
        kx.refreshSpread(true, nullptr);
        EXPECT_EQ(text(1), u"°C");
    }
}

// At the load as after a read, whatever the images hold: defaults, scaled; what no read fills stays as it is.
TEST_F(Refresh, OffLineItemsTakeTheirDefaults)
{
    settings.m_bComm = true;
    load(screenOf({"DefaultData=12\nDataInfo=1,0,9,<=,<=,0", "DataLen=2\nDefaultData=345\nDataInfo=2,0,9,<=,<=,0",
                   "DataLen=4\nDefaultData=5\nDataInfo=1,0,9,<=,<=,0", "DataLen=14\nDefaultData=x\nCellType=String",
                   "DefaultData=1\nCellType=Bit\nBitMask=1"},
                  kRead),
         kComm);
    for (const char* when : {"load", "read"}) {
        const QStringList texts{text(1), text(2), text(3), text(4), text(5)};
        EXPECT_EQ(texts.join(u' '), u"1.2 3.45 0.5 KX41000000-10A On") << when;
        answer(0, QByteArray("\7\7\7\0", 4));
        kx.refreshSpread(true, nullptr);
    }
    kx.items().back()->setData("7");
    EXPECT_FALSE(kx.items().back()->isAllowed()) << "neither on nor off";
    settings.m_bComm = false;
    EXPECT_EQ(kx.currentSet().values.front().second, QString()) << "on-line no value of the controller";
}

TEST_F(Refresh, MissingTablesAreToldOnce)
{
    RecordingMessages::Record told;
    RecordingMessages presenter(told);
    box.context.messages = presenter;
    load(screenOf({"Tag=A\nCellType=Multi\nMultiSelectSection=AL", "Tag=B\nCellType=Input\nInputCSelectSection=C"}));
    EXPECT_EQ(told.texts, QStringList{"Not Found MultiSelect.ini"});
    EXPECT_EQ(kx.items().size(), 2U);
    EXPECT_FALSE(QFile::exists(box.path(definition("MultiSelect.ini")))) << "none is invented";
}

TEST_F(Refresh, WordsAreShownInTheUsersLanguage)
{
    put("C:\\Vorlant\\Lang\\T.txt",
        "[Language]\nSet value=Sollwert\nSend=Senden\nRun=Start\nOffvbTabOn=AusvbTabAn\nAvbTabB=nur eins\n"
        "High=Hochalarm\nsaved=wrong\n");
    put(definition("MultiSelect.ini"), "[AL]\nData1=0,1\nName1=High\nName2=Test\n");
    box.context.languageFile = "T.txt";
    load(screenOf({"Tag=RUN\nCellType=Bit\nBitCaptionOn=Run\nBitMask=1",
                   "Tag=CMB\nCellType=Combo\nComboStrings=OffvbTabOn\nComboDatas=0vbTab1",
                   "Tag=BAD\nCellType=Combo\nComboStrings=AvbTabB\nComboDatas=0vbTab1",
                   "Tag=PQKAL1\nCellType=Multi\nMultiSelectSection=AL",
                   "Tag=OTHER\nCellType=Multi\nMultiSelectSection=AL"},
                  kRead, "BlockMaxCount=1\nStringMaxCount=1\n") +
             "[BlockInfo1]\nButtonCaption=Send\nButtonData=1,2,vbRed,vbBlack\n"
             "[Strings1]\nCaption=Set value\nCellData=2,2,vbWhite,vbBlack\n",
         kComm);
    answer(0, QByteArray("\1\0\0\0", 4));
    kx.refreshSpread(true, nullptr);
    EXPECT_EQ(grid.cell(1, 2).text, u"Senden");
    EXPECT_EQ(grid.cell(2, 2).text, u"Sollwert");
    EXPECT_EQ(text(1), u"Start");
    EXPECT_EQ(text(2), u"An");
    EXPECT_EQ(text(3), u"B") << "a translation with another number of choices is not used";
    EXPECT_EQ(text(4), "Hochalarm");
    EXPECT_EQ(item("PQKAL1").VData(), u"High") << "rules see the definition's own text";
    EXPECT_EQ(grid.colWidth(1), grid.maxTextColWidth(1));
    EXPECT_EQ(text(5), u"High") << "only the five named choices are words of a sentence";
}

// What a cell is can be seen: a state, a switch, a way to a table; and the unit of temperatures stands beside them.
TEST_F(Refresh, CellsTellWhatTheyAreAndTheirUnit)
{
    using platform::CellSign;
    copyShipped("ini");
    catalogue(
        "KXMaxCount=1\nKXModel1=KX910\nKXName1=KX910\nKXScreenFile1=KX910Screen.ini\nKXCommFile1=KX910Comm.ini\n");
    kx.load(1, &library, "KX91011110-10A");
    const std::pair<const char*, CellSign> signs[] = {{"STAL1", CellSign::State}, {"RUNSTP", CellSign::Switch},
                                                      {"PQRNO", CellSign::Table}, {"PQKAL1", CellSign::Table},
                                                      {"VQSV1", CellSign::None},  {"PIDONOF", CellSign::None}};
    for (const auto& [tag, sign] : signs)
        EXPECT_EQ(grid.cell(item(tag).Row(), item(tag).Col()).sign, sign) << tag;
    // PQRNO 1: a thermocouple, 20: a voltage. Alarm type 1 is a temperature, 4 is none.
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"1", "0", "1", "°C °C °C/min % "}, {"1", "1", "4", "K  K/min % "}, {"20", "0", "1", "  /min % "}};
    for (const auto& [range, unit, alarm, units] : rows) {
        item("PQRNO").hold(range);
        item("SWQCF").hold(unit);
        item("PQKAL1").hold(alarm);
        kx.refreshSpread(false, nullptr);
        QString shown;
        for (const char* tag : {"VQSV1", "VQAL1", "VQSVUP", "VQP1"})
            shown += grid.cell(item(tag).Row(), item(tag).Col() + 1).text + u' ';
        EXPECT_EQ(shown.toStdString(), units) << range << unit << alarm;
    }
}

} // namespace
