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

TEST_F(Refresh, OnlyWhatTheReplyHoldsIsShown)
{
    struct
    {
        const char* name;
        const char* keys;
        const char* shown;
    } const rows[] = {
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
    QByteArray screen = "[Setting]\nDataMaxCount=" + QByteArray::number(std::size(rows)) + "\nMaxRow=20\nMaxCol=1\n";
    int n = 0;
    for (const auto& row : rows)
        screen += dataSection(++n, row.keys);
    load(screen, kComm);
    answer(0, QByteArray("\1\2\3\4", 4));
    answer(2, QByteArray::fromHex("43160000"));
    kx.ColAdr().at(1).setInteger(QString(), -2);
    kx.ColAdr().at(1).markFilled();
    kx.refreshSpread(true, nullptr);
    n = 0;
    for (const auto& row : rows)
        EXPECT_EQ(text(++n), QLatin1String(row.shown)) << row.name;
    EXPECT_FALSE(grid.cell(2, 1).toolTip.isEmpty()) << "why it is empty";
}

// The range comes before the unit in the file, and still is looked up in the table of the unit that was read.
TEST_F(Refresh, UnitIsReadBeforeTheRange)
{
    for (const char* row : {"Bit", "Combo"}) {
        SCOPED_TRACE(row);
        put(definition(QStringLiteral("MultiSelect.ini")),
            "[C]\nData1=0,5\nName1=Celsius\nName2=Test\n[K]\nData1=0,5,"
            "77,9,1\nSetTags1=,,tagDHIDDEN,tagDHIDDEN2,tagVHIDDEN3\nName1=Kelvin\nName2=Test\n");
        load("[Setting]\nDataMaxCount=5\nMaxRow=5\nMaxCol=1\n" +
                 dataSection(4, "Tag=HIDDEN2\nOption=0=KX41\nVisible=False\nDataLen=1\nKXAddress=8002\n"
                                "CommRaedSection=Main") +
                 dataSection(5, "Tag=HIDDEN3\nOption=0=KX41\nVisible=False") +
                 dataSection(1,
                             "Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K\nKXAddress=8000\n"
                             "DataLen=1\nCommRaedSection=Main") +
                 dataSection(2,
                             (QByteArray("Tag=SWQCF\nBitMask=1\nComboStrings=C,vbTabK\nComboDatas=0vbTab1\nDataLen=1\n"
                                         "KXAddress=8001\nCommRaedSection=Main\nCellType=") +
                              row)
                                 .constData()) +
                 dataSection(3, "Tag=HIDDEN\nOption=0=KX41\nVisible=False"),
             kComm);
        answer(0, QByteArray("\5\1\2\0", 4));
        kx.refreshSpread(true, nullptr);
        EXPECT_EQ(kx.unitSwitch(), 1);
        EXPECT_EQ(text(1), u"Kelvin");
        EXPECT_EQ(kx.getDataByTag(QStringLiteral("HIDDEN"))->Data(), u"77");
        EXPECT_EQ(kx.getDataByTag(QStringLiteral("HIDDEN2"))->Data(), u"2") << "what was read holds over the table";
        for (const auto& item : kx.items())
            EXPECT_NE(item->Edit, EditState::kChanged) << qPrintable(item->Key());
        answer(0, QByteArray("\5\0\0\0", 4));
        kx.refreshSpread(true, nullptr);
        EXPECT_EQ(text(1), u"Celsius");
    }
}

// At the load as after a read, whatever the images hold: defaults, scaled; what no read fills stays as it is.
TEST_F(Refresh, OffLineItemsTakeTheirDefaults)
{
    settings.m_bComm = true;
    load(
        "[Setting]\nDataMaxCount=5\nMaxRow=9\nMaxCol=1\n" +
            dataSection(1, "DataLen=1\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=12\nDataInfo=1,0,9,<=,<=,0") +
            dataSection(2, "DataLen=2\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=345\nDataInfo=2,0,9,<=,<=,0") +
            dataSection(3, "DataLen=4\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=5\nDataInfo=1,0,9,<=,<=,0") +
            dataSection(4, "DataLen=14\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=x\nCellType=String") +
            dataSection(5, "DataLen=1\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=1\nCellType=Bit\nBitMask=1"),
        kComm);
    for (const char* when : {"load", "read"}) {
        const QStringList texts{text(1), text(2), text(3), text(4), text(5)};
        EXPECT_EQ(texts.join(u' '), u"1.2 3.45 0.5 KX41000000-10A On") << when;
        answer(0, QByteArray("\7\7\7\0", 4));
        kx.refreshSpread(true, nullptr);
    }
    kx.items().back()->setData(QStringLiteral("7"));
    EXPECT_FALSE(kx.items().back()->isAllowed()) << "neither on nor off";
    settings.m_bComm = false;
    EXPECT_EQ(kx.currentSet().values.front().second, QString()) << "on-line no value of the controller";
}

TEST_F(Refresh, MissingTablesAreToldOnce)
{
    RecordingMessages::Record told;
    RecordingMessages presenter(told);
    box.context.messages = presenter;
    load("[Setting]\nDataMaxCount=2\nMaxRow=5\nMaxCol=1\n" +
         dataSection(1, "Tag=A\nCellType=Multi\nMultiSelectSection=AL\nDataLen=1") +
         dataSection(2, "Tag=B\nCellType=Input\nInputCSelectSection=C\nDataLen=1"));
    EXPECT_EQ(told.texts, QStringList{QStringLiteral("Not Found MultiSelect.ini")});
    EXPECT_EQ(kx.items().size(), 2U);
    EXPECT_FALSE(QFile::exists(box.path(definition(QStringLiteral("MultiSelect.ini"))))) << "none is invented";
}

TEST_F(Refresh, WordsAreShownInTheUsersLanguage)
{
    put(QStringLiteral("C:\\Vorlant\\Lang\\T.txt"),
        "[Language]\nSet value=Sollwert\nSend=Senden\nRun=Start\nOffvbTabOn=AusvbTabAn\nAvbTabB=nur eins\n"
        "High=Hoch\nsaved=wrong\n");
    put(definition(QStringLiteral("MultiSelect.ini")), "[AL]\nData1=0,1\nName1=High\nName2=Test\n");
    box.context.languageFile = QStringLiteral("T.txt");
    load("[Setting]\nBlockMaxCount=1\nStringMaxCount=1\nDataMaxCount=5\nMaxRow=9\nMaxCol=2\n"
         "[BlockInfo1]\nButtonCaption=Send\nButtonData=1,2,vbRed,vbBlack\n"
         "[Strings1]\nCaption=Set value\nCellData=2,2,vbWhite,vbBlack\n" +
             dataSection(1, "Tag=RUN\nCellType=Bit\nBitCaptionOn=Run\nBitMask=1\nDataLen=1\nKXAddress=8000\n"
                            "CommRaedSection=Main") +
             dataSection(2, "Tag=CMB\nCellType=Combo\nComboStrings=OffvbTabOn\nComboDatas=0vbTab1\nDataLen=1\n"
                            "KXAddress=8000\nCommRaedSection=Main") +
             dataSection(3, "Tag=BAD\nCellType=Combo\nComboStrings=AvbTabB\nComboDatas=0vbTab1\nDataLen=1\n"
                            "KXAddress=8000\nCommRaedSection=Main") +
             dataSection(4, "Tag=PQKAL1\nCellType=Multi\nMultiSelectSection=AL\nDataLen=1\nKXAddress=8000\n"
                            "CommRaedSection=Main") +
             dataSection(5, "Tag=OTHER\nCellType=Multi\nMultiSelectSection=AL\nDataLen=1\nKXAddress=8000\n"
                            "CommRaedSection=Main"),
         kComm);
    answer(0, QByteArray("\1\0\0\0", 4));
    kx.refreshSpread(true, nullptr);
    EXPECT_EQ(grid.cell(1, 2).text, u"Senden");
    EXPECT_EQ(grid.cell(2, 2).text, u"Sollwert");
    EXPECT_EQ(text(1), u"Start");
    EXPECT_EQ(text(2), u"An");
    EXPECT_EQ(text(3), u"B") << "a translation with another number of choices is not used";
    EXPECT_EQ(text(4), u"Hoch");
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("PQKAL1"))->VData(), u"High") << "rules see the definition's own text";
    EXPECT_EQ(text(5), u"High") << "only the five named choices are words of a sentence";
}

} // namespace
