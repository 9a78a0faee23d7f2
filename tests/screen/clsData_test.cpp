#include "ScreenFixture.h"

namespace {

struct DisplayCase
{
    const char* name;
    const char* keys;
    const char16_t* stored;
    const char16_t* shown;
};

class DisplayValue : public ScreenFixture, public ::testing::WithParamInterface<DisplayCase>
{};

TEST_P(DisplayValue, FollowsTypeAndDecimals)
{
    put(definition(QStringLiteral("MultiSelect.ini")),
        "[C]\nData1=0,1,0\nName1=K 0-400vbTabx\nData2=0,9,0\nName2=1-5V DCvbTabx\nName3=Test\n"
        "[K]\nData1=0,1,0\nName1=K 273-673vbTabx\nName2=Test\n[A]\nData1=0,2,0\nName1=HighvbTabx\nName2=Test\n");
    load(QByteArray("[Setting]\nDataMaxCount=4\n[EVDOT]\nLastIndex=2\n0=0,1,2,3\n1=4,4,4,4\n2=5,3,1,0\n") +
         dataSection(1, GetParam().keys) + dataSection(2, "Tag=SVDOT\nCellData=2,1,vbWhite,vbBlack\nDefaultData=2") +
         dataSection(3, "Tag=PQKAL2\nCellData=3,1,vbWhite,vbBlack\nDefaultData=2") +
         dataSection(4, "Tag=ZERO\nCellData=4,1,vbWhite,vbBlack\nDefaultData=0"));
    clsData* item = kx.items().front().get();
    item->setData(QString::fromUtf16(GetParam().stored));
    EXPECT_EQ(item->VData(), QString::fromUtf16(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(
    Items, DisplayValue,
    ::testing::Values(
        DisplayCase{"OneDecimal", "Tag=A\nDataInfo=1,-1999,9999,<=,<=,0,10", u"1234", u"123.4"},
        DisplayCase{"NoDecimals", "Tag=A\nDataInfo=0,0,1,<=,<=,0,10", u"-7", u"-7"},
        DisplayCase{"FiveDecimals", "Tag=A\nDataInfo=5,0,1,<=,<=,0,10", u"32767", u"0.32767"},
        DisplayCase{"SixDecimalsAreNone", "Tag=A\nDataInfo=6,0,1,<=,<=,0,10", u"5", u"0.000000"},
        DisplayCase{"NotANumber", "Tag=A\nDataInfo=1,0,1,<=,<=,0,10", u"abc", u"0.0"},
        DisplayCase{"ByOtherItem", "Tag=A\nDataInfo=DOTSVDOT,0,1,<=,<=,0,10", u"1234", u"12.34"},
        DisplayCase{"ByMissingItem", "Tag=A\nDataInfo=DOTNONE,0,1,<=,<=,0,10", u"1234", u"1234"},
        DisplayCase{"BiasHasOneAtLeast", "Tag=VQBIA\nDataInfo=DOTZERO,0,1,<=,<=,0,10", u"15", u"1.5"},
        DisplayCase{"ByItself", "Tag=A\nDataInfo=DOTA,0,1,<=,<=,0,10", u"3", u"0.003"},
        DisplayCase{"AlarmByTable", "Tag=VQAL2\nDataInfo=0,0,1,<=,<=,0,10", u"1234", u"123.4"},
        DisplayCase{"FewFields", "Tag=A\nDataInfo=1", u"15", u"1.5"},
        DisplayCase{"BitOn", "Tag=A\nCellType=Bit\nBitCaptionOn=Run\nBitCaptionOff=Stop", u"1", u"Run"},
        DisplayCase{"BitOther", "Tag=A\nCellType=Bit\nBitCaptionOn=Run\nBitCaptionOff=Stop", u"2", u"Stop"},
        DisplayCase{"Combo", "Tag=A\nCellType=Combo\nComboStrings=OffvbTabOn\nComboDatas=0vbTab1", u"1", u"On"},
        DisplayCase{"ComboLastMatch", "Tag=A\nCellType=Combo\nComboStrings=avbTabbvbTabc\nComboDatas=0vbTab0vbTab1",
                    u"0", u"b"},
        DisplayCase{"ComboNoMatch", "Tag=A\nCellType=Combo\nComboStrings=avbTabb\nComboDatas=0vbTab1", u"7", u""},
        DisplayCase{"Multi", "Tag=A\nCellType=Multi\nMultiSelectSection=A", u"2", u"High"},
        DisplayCase{"InputCelsius", "Tag=A\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K", u"1",
                    u"K 0-400"},
        DisplayCase{"InputUnknown", "Tag=A\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K", u"5", u""},
        DisplayCase{"String", "Tag=A\nCellType=String", u"KX410", u"KX410"},
        DisplayCase{"UnknownTypeIsUnscaled", "Tag=A\nCellType=Odd\nDataInfo=1,0,1,<=,<=,0,10", u"1234", u"1234"}),
    [](const auto& row) { return std::string(row.param.name); });

class Item : public ScreenFixture
{};

TEST_F(Item, VoltageRangeGivesInputLimitsThreePlaces)
{
    put(definition(QStringLiteral("MultiSelect.ini")), "[C]\nData1=0,9,0\nName1=1-5V DCvbTabx\nName2=Test\n");
    load(QByteArray("[Setting]\nDataMaxCount=2\n") +
         dataSection(1, "Tag=VQLIZS\nDataInfo=1,0,1,<=,<=,0,10\nDefaultData=5000") +
         dataSection(2, "Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nDefaultData=9"));
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("VQLIZS"))->VData(), u"5.000");
    kx.setData(QStringLiteral("PQRNO"), QStringLiteral("1"), false);
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("VQLIZS"))->VData(), u"500.0");
}

TEST_F(Item, DecimalCircleThroughTwoItemsEnds)
{
    load(QByteArray("[Setting]\nDataMaxCount=2\n") +
         dataSection(1, "Tag=A\nDataInfo=DOTB,0,1,<=,<=,0,10\nDefaultData=1") +
         dataSection(2, "Tag=B\nDataInfo=DOTA,0,1,<=,<=,0,10\nDefaultData=1"));
    EXPECT_FALSE(kx.getDataByTag(QStringLiteral("A"))->VData().isEmpty());
}

TEST_F(Item, KelvinTableFollowsUnitSwitch)
{
    put(definition(QStringLiteral("MultiSelect.ini")),
        "[C]\nData1=0,1,0\nName1=CelsiusvbTabx\nName2=Test\n[K]\nData1=0,1,0\nName1=KelvinvbTabx\nName2=Test\n");
    load(QByteArray("[Setting]\nDataMaxCount=1\n") +
         dataSection(1, "Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K\nDefaultData=1"));
    EXPECT_EQ(kx.items().front()->VData(), u"Celsius");
    kx.setUnitSwitch(1);
    EXPECT_EQ(kx.items().front()->VData(), u"Kelvin");
}

TEST_F(Item, MissingKeysAreWrittenBack)
{
    load("[Setting]\nDataMaxCount=1\n; a remark\n[Datas1]\nTag=A\n");
    const QByteArray file = content(definition(QStringLiteral("M.ini")));
    EXPECT_TRUE(file.contains("; a remark"));
    EXPECT_TRUE(file.contains("CellData=1,1,vbWindowBackground,vbWindowText")) << file.constData();
    EXPECT_TRUE(file.contains("CommRaedSection="));
    EXPECT_FALSE(file.contains("Name=T")) << "the name is read-only";
}

} // namespace
