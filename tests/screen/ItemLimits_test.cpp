#include "ScreenFixture.h"

#include <QStringList>

namespace {

// A screen of the items given as "TAG|type|stored|decimals,lower,upper,sign,sign"; column 1, one row each.
class Screen : public ScreenFixture
{
protected:
    void build(const QStringList& items, const QString& model = QStringLiteral("KX41000000-10A"))
    {
        put(definition(QStringLiteral("MultiSelect.ini")),
            "[R]\nSetTags1=,,tagDLOW,tagDHIGH\nData1=0,1,-200,1372\nName1=K -200-1372\n"
            "SetTags2=,,tagVLOW,tagDSVDOT,tagDHIGH\nData2=0,9,-1.5,2,9999\nName2=1-5V DC\nName3=Test\n");
        QByteArray text = "[Setting]\nMaxRow=20\nDataMaxCount=" + QByteArray::number(items.size()) + "\n";
        int n = 0;
        for (const QString& item : items) {
            ++n;
            const QStringList fields = item.split(u'|');
            const QString info = fields.value(3).isEmpty() ? QStringLiteral("0,-100,100,<=,<=") : fields[3];
            const QString keys = QStringLiteral("Tag=%1\nCellType=%2\nDefaultData=%3\nDataInfo=%4,0,10\n"
                                                "CellData=%5,1,vbWhite,vbBlack\n%6")
                                     .arg(fields[0], fields[1], fields[2], info, QString::number(n), fields.value(4));
            text += dataSection(n, keys.toUtf8().constData());
        }
        load(text, {}, model);
    }
};

const QString kCelsiusRange = QStringLiteral("PQRNO|Input|1|0,0,0,<=,<=|InputCSelectSection=R\nInputKSelectSection=R");
const QString kVoltageRange = QStringLiteral("PQRNO|Input|9|0,0,0,<=,<=|InputCSelectSection=R\nInputKSelectSection=R");

struct LimitCase
{
    const char* name;
    QStringList others;
    QString item;
    QString limits; // lower, sign, upper sign, upper
};

class Limits : public Screen, public ::testing::WithParamInterface<LimitCase>
{};

TEST_P(Limits, FollowTagAndOtherItems)
{
    build(QStringList(GetParam().item) + GetParam().others);
    const clsData& item = *kx.items().front();
    EXPECT_EQ(QStringList({item.LimitL(), item.SignL(), item.SignH(), item.LimitH()}).join(u' '), GetParam().limits);
}

QStringList list(std::initializer_list<const char*> texts)
{
    QStringList result;
    for (const char* text : texts)
        result << QString::fromLatin1(text);
    return result;
}

LimitCase limits(const char* name, const QStringList& others, const char* item, const char* expected)
{
    return {name, others, QString::fromLatin1(item), QString::fromLatin1(expected)};
}

INSTANTIATE_TEST_SUITE_P(
    Items, Limits,
    ::testing::Values(
        limits("PlainTextUnchanged", {}, "A|Data|5|1,-10,TAGB,<,<=", "-10 < <= TAGB"),
        limits("AlarmScaled", {}, "VQBIA|Data|0|1,-1999,9999,<=,<", "-199.9 <= < 999.9"),
        limits("AlarmByTag", list({"HIGH|Data|800|0,0,0,<=,<="}),
               "VQRBIA|Data|0|1,-1999,tagHIGH,<=,<=", "-199.9 <= <= 80.0"),
        limits("MissingTagIsZero", {}, "VQSVUP|Data|0|0,TAGNONE,9,<=,<=", "0 <= <= 9"),
        limits("InputLimit", {kCelsiusRange}, "VQLIL|Data|0|1,0,4000,<=,<", "0.0 <= < 400.0"),
        limits("InputLimitOfVoltage", {kVoltageRange}, "VQLIH|Data|0|2,0,4000,<=,<=", "-19.99 <= <= 99.99"),
        limits("SetValueNotScaled", list({"LO|Data|100|1,0,0,<=,<="}),
               "VQSVL|Data|0|1,TAGLO,20,<=,<=", "10.0 <= <= 20.0"),
        limits("SetValueOfVoltageOrdered", {kVoltageRange}, "VQSVH|Data|0|1,50,-3,<=,<=", "-3.0 <= <= 50.0"),
        limits("BandWithPid", list({"PIDONOF|Combo|0||ComboStrings=PIDvbTabOnOff\nComboDatas=0vbTab1"}),
               "VQP1|Data|0|1,0.2,200,<=,<=", "0.1 <= <= 200"),
        limits("BandOfOnOff", list({"PIDONOF|Combo|1||ComboStrings=PIDvbTabOnOff\nComboDatas=0vbTab1"}),
               "VQP1|Data|0|1,0.2,200,<=,<=", "0 <= <= 0"),
        limits("BandAlone", {}, "VQP1|Data|0|1,0.2,200,<=,<=", "0.2 <= <= 200"),
        limits("GapWithoutBand", list({"VQP1|Data|0|1,0,0,<=,<="}), "VQODB|Data|0|1,0,50,<=,<=", "0.1 <= <= 50"),
        limits("GapWithBand", list({"VQP1|Data|30|1,0,0,<=,<="}), "VQODB|Data|0|1,1,50,<=,<=", "0 <= <= 50"),
        limits("OutputHighAboveNegativeLow", list({"VQOL1|Data|-1|1,0,0,<=,<="}), "VQOH1|Data|0|1,50,105,<,<",
               "0 <= < 105"),
        limits("OutputHighAboveLow", list({"VQOL1|Data|0|1,0,0,<=,<="}), "VQOH1|Data|0|1,TAGVQOL1,105,<,<",
               "TAGVQOL1 < < 105"),
        limits("OutputLowBelowFull", list({"VQOH1|Data|1001|1,0,0,<=,<="}), "VQOL1|Data|0|1,-5,TAGVQOH1,<,<",
               "-5 < <= 100"),
        limits("OutputLowBelowHigh", list({"VQOH1|Data|1000|1,0,0,<=,<="}), "VQOL1|Data|0|1,-5,TAGVQOH1,<,<",
               "-5 < < TAGVQOH1")),
    [](const auto& row) { return std::string(row.param.name); });

class Limit : public Screen
{};

TEST_F(Limit, CurrentLimitCountsOnlyWithVoltageRange)
{
    build({QStringLiteral("A|Data|0|0,1,2,<=,<="), kCelsiusRange});
    kx.items().front()->setLimitL(QStringLiteral("-5"));
    kx.items().front()->setLimitH(QStringLiteral("5"));
    EXPECT_EQ(kx.items().front()->LimitL(), u"1");
    kx.getDataByTag(QStringLiteral("PQRNO"))->setData(QStringLiteral("9"));
    EXPECT_EQ(kx.items().front()->LimitL(), u"-5");
    EXPECT_EQ(kx.items().front()->LimitH(), u"5");
}

struct EntryCase
{
    const char* name;
    const char* item;
    const char* typed;
    const char* stored;
};

class Entry : public Screen, public ::testing::WithParamInterface<EntryCase>
{};

TEST_P(Entry, IsScaledAndMarked)
{
    build({QString::fromLatin1(GetParam().item)});
    clsData& item = *kx.items().front();
    item.setVData(QString::fromLatin1(GetParam().typed));
    EXPECT_EQ(item.Data(), QString::fromLatin1(GetParam().stored));
    EXPECT_EQ(item.Edit, EditState::kChanged);
    EXPECT_TRUE(item.SprFontBold());
}

INSTANTIATE_TEST_SUITE_P(Texts, Entry,
                         ::testing::Values(EntryCase{"OneDecimal", "A|Data|0|1,0,0,<=,<=", "50", "500"},
                                           EntryCase{"SinglePrecision", "A|Data|0|2,0,0,<=,<=", "12.34", "1234"},
                                           EntryCase{"TooManyPlaces", "A|Data|7|6,0,0,<=,<=", "3", "0"},
                                           EntryCase{"NoNumber", "A|Data|7|1,0,0,<=,<=", "abc", "0"},
                                           EntryCase{"UnknownTypeScales", "A|Odd|7|1,0,0,<=,<=", "3", "30"},
                                           EntryCase{"TextKeepsStored", "A|String|old|1,0,0,<=,<=", "new", "old"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Limit, ComboIndexBothWays)
{
    build({QStringLiteral("A|Combo|0||ComboStrings=avbTabbvbTabc\nComboDatas=5vbTab7vbTab7")});
    clsData& item = *kx.items().front();
    EXPECT_EQ(item.ComboIdx(), 0) << "no match counts as the first";
    item.setComboIdx(2);
    EXPECT_EQ(item.Data(), u"7");
    EXPECT_EQ(item.ComboIdx(), 1);
    item.setComboIdx(3);
    EXPECT_EQ(item.Data(), u"7");
}

class Choice : public Screen
{};

TEST_F(Choice, SetsOnlyItemsWithoutCell)
{
    build({kCelsiusRange, QStringLiteral("LOW|Data|3|0,0,0,<=,<=|Option=0=KX41\nVisible=False"),
           QStringLiteral("HIGH|Data|4|0,0,0,<=,<=")});
    kx.getDataByTag(QStringLiteral("PQRNO"))->setData(QStringLiteral("1"));
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("LOW"))->Data(), u"-200");
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("HIGH"))->Data(), u"4") << "has a cell";
}

TEST_F(Choice, StartsOverOnceAfterDecimalPlaces)
{
    const QString hidden = QStringLiteral("|Option=0=KX41\nVisible=False");
    build({kCelsiusRange, QStringLiteral("LOW|Data|3|DOTSVDOT,0,0,<=,<=") + hidden,
           QStringLiteral("HIGH|Data|4|0,0,0,<=,<=") + hidden, QStringLiteral("SVDOT|Data|0|0,0,3,<=,<=") + hidden});
    kx.getDataByTag(QStringLiteral("PQRNO"))->setData(QStringLiteral("9"));
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("SVDOT"))->Data(), u"2");
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("LOW"))->Data(), u"-150") << "scaled with the new decimal places";
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("HIGH"))->Data(), u"9999");
}

TEST_F(Choice, CircleOfTablesEnds)
{
    const QString hidden = QStringLiteral("0,0,0,<=,<=|Option=0=KX41\nVisible=False\nMultiSelectSection=");
    put(definition(QStringLiteral("MultiSelect.ini")), "");
    build({QStringLiteral("A|Multi|0|") + hidden + QStringLiteral("LA"),
           QStringLiteral("B|Multi|0|") + hidden + QStringLiteral("LB")});
    put(definition(QStringLiteral("MultiSelect.ini")), "[LA]\nSetTags1=,,tagDB\nData1=0,1,1\nName1=x\nName2=Test\n"
                                                       "[LB]\nSetTags1=,,tagDA\nData1=0,1,1\nName1=x\nName2=Test\n");
    load(content(definition(QStringLiteral("M.ini"))));
    kx.getDataByTag(QStringLiteral("A"))->setData(QStringLiteral("1"));
    EXPECT_EQ(kx.getDataByTag(QStringLiteral("B"))->Data(), u"1");
}

struct LockCase
{
    const char* name;
    const char* model;
    const char* alarmType;
    bool voltage;
    const char* locked; // tags of the locked cells
};

class Locks : public Screen, public ::testing::WithParamInterface<LockCase>
{};

TEST_P(Locks, FollowRangeAlarmTypeAndFamily)
{
    QStringList items{GetParam().voltage ? kVoltageRange : kCelsiusRange,
                      QStringLiteral("PQKAL1|Data|") + QString::fromLatin1(GetParam().alarmType)};
    for (const char* tag : {"VQLIL", "SVDOT", "VQAL1", "VQ1DB", "VQAL2", "EV1MOD", "EV1WAIT", "EV2MOD", "OTHER"})
        items << QString::fromLatin1(tag) + QStringLiteral("|Data|0");
    items << QStringLiteral("SWQCF|Bit|0");
    build(items, QString::fromLatin1(GetParam().model));
    kx.refreshSpread(false, nullptr);
    QStringList locked;
    for (const auto& item : kx.items()) {
        if (grid.cell(item->Row(), item->Col()).locked)
            locked << item->Key();
    }
    EXPECT_EQ(locked.join(u' '), QString::fromLatin1(GetParam().locked));
}

INSTANTIATE_TEST_SUITE_P(
    Settings, Locks,
    ::testing::Values(LockCase{"Thermocouple", "KX41000000-10A", "1", false, "VQLIL SVDOT"},
                      LockCase{"Voltage", "KX41000000-10A", "1", true, "SWQCF"},
                      LockCase{"OtherFamilyKeepsAlarms", "KX41000000-10A", "5", true, "EV1MOD EV1WAIT SWQCF"},
                      LockCase{"PlainType", "KX91000000-10A", "5", true, "VQAL1 VQ1DB EV1MOD EV1WAIT SWQCF"},
                      LockCase{"ComparedAsText", "KX91000000-10A", "10", true, "SWQCF"},
                      LockCase{"TypeThree", "KX91000000-10A", "3", true, "EV1MOD EV1WAIT SWQCF"},
                      LockCase{"TypeTwo", "KX91000000-10A", "2", true, "EV1MOD SWQCF"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Limit, LockedButtonTurnsGrayAndBack)
{
    build({kVoltageRange, QStringLiteral("SWQCF|Bit|0")});
    kx.refreshSpread(false, nullptr);
    EXPECT_EQ(grid.cell(2, 1).foreColor, 0x808080U);
    kx.getDataByTag(QStringLiteral("PQRNO"))->setData(QStringLiteral("1"));
    kx.refreshSpread(false, nullptr);
    EXPECT_EQ(grid.cell(2, 1).foreColor, 0U);
    EXPECT_FALSE(grid.cell(2, 1).locked);
}

} // namespace
