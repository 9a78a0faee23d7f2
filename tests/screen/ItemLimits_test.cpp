#include "ScreenFixture.h"
#include "Table.h"

#include <QStringList>

namespace {

TEST(Comparison, ComparesInSinglePrecision)
{
    for (const QStringList& row : tableRows("screen/comparisons.tsv"))
        EXPECT_EQ(compareNumbers(row[0], row[1], row[2]), row[3] == u"1") << qPrintable(row.join(u' '));
}

// A screen of items as in itemKeys.
class Screen : public ScreenFixture
{
protected:
    void build(const QStringList& items, const QString& model = "KX41000000-10A")
    {
        put(definition("MultiSelect.ini"),
            "[R]\nSetTags1=,,tagDLOW,tagDHIGH\nData1=0,1,-200,1372\nName1=K -200-1372\n"
            "SetTags2=,,tagVLOW,tagDSVDOT,tagDHIGH\nData2=0,9,-1.5,2,9999\nName2=1-5V DC\nName3=Test\n"
            "[LA]\nSetTags1=,,tagDB\nData1=0,1,1\nName1=x\nName2=Test\n"
            "[LB]\nSetTags1=,,tagDA\nData1=0,1,1\nName1=x\nName2=Test\n");
        load(screenOf(itemKeys(items)), {}, model);
    }
};

const QString kHidden = "|Option=0=KX41\nVisible=False";
// %1: the stored value of a thermocouple, 1, or of a voltage, 9.
const QString kRange = "PQRNO|Input|%1|0,0,0,<=,<=|InputCSelectSection=R\nInputKSelectSection=R";

TEST_F(Screen, LimitsFollowTagAndOtherItems)
{
    for (const QStringList& row : tableRows("screen/limits.tsv")) {
        build(row[1].isEmpty() ? QStringList(row[2]) : QStringList({row[2], row[1]}));
        const clsData& item = *kx.items().front();
        EXPECT_EQ(QStringList({item.LimitL(), item.SignL(), item.SignH(), item.LimitH()}).join(u' '), row[3])
            << qPrintable(row[0]);
    }
}

TEST_F(Screen, CurrentLimitCountsOnlyWithVoltageRange)
{
    build({"A|Data|0|0,1,2,<=,<=", kRange.arg(1)});
    item("A").setLimitL("-5");
    item("A").setLimitH("5");
    EXPECT_EQ(item("A").LimitL(), "1");
    item("PQRNO").setData("9");
    EXPECT_EQ(item("A").LimitL(), "-5");
    EXPECT_EQ(item("A").LimitH(), "5");
}

TEST_F(Screen, EntryIsScaledAndMarked)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"A|Data|0|2,0,0,<=,<=", "12.34", "1234"},  {"A|Data|0|0,0,0,<=,<=", "12.6", "13"},
        {"A|Data|7|1,0,0,<=,<=", "abc", "0"},       {"A|Odd|7|1,0,0,<=,<=", "3", "30"},
        {"A|String|old|1,0,0,<=,<=", "new", "old"},
    };
    for (const auto& [defined, typed, stored] : rows) {
        build({defined});
        item("A").setVData(typed);
        EXPECT_EQ(item("A").Data(), stored) << defined;
        EXPECT_EQ(item("A").Edit, EditState::kChanged) << defined;
        EXPECT_TRUE(item("A").SprFontBold()) << defined;
    }
}

TEST_F(Screen, ChoiceSetsOnlyItemsWithoutCell)
{
    build({kRange.arg(1), "LOW|Data|3|0,0,0,<=,<=" + kHidden, "HIGH|Data|4|0,0,0,<=,<="});
    item("PQRNO").setData("1");
    EXPECT_EQ(item("LOW").Data(), "-200");
    EXPECT_EQ(item("HIGH").Data(), "4") << "has a cell";
}

TEST_F(Screen, ChoiceStartsOverOnceAfterDecimalPlaces)
{
    build({kRange.arg(1), "LOW|Data|3|DOTSVDOT,0,0,<=,<=" + kHidden, "HIGH|Data|4|0,0,0,<=,<=" + kHidden,
           "SVDOT|Data|0|0,0,3,<=,<=" + kHidden});
    item("PQRNO").setData("9");
    EXPECT_EQ(item("SVDOT").Data(), "2");
    EXPECT_EQ(item("LOW").Data(), "-150") << "scaled with the new decimal places";
    EXPECT_EQ(item("HIGH").Data(), "9999");
}

TEST_F(Screen, CircleOfTablesEnds)
{
    build({"A|Multi|0|0,0,0,<=,<=" + kHidden + "\nMultiSelectSection=LA",
           "B|Multi|0|0,0,0,<=,<=" + kHidden + "\nMultiSelectSection=LB"});
    item("A").setData("1");
    EXPECT_EQ(item("B").Data(), "1");
}

TEST_F(Screen, LocksFollowRangeAlarmTypeAndFamily)
{
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        // Family, alarm type, input range; tags of the locked cells.
        {"KX41", "1", 1, "VQLIL SVDOT"},          {"KX41", "1", 9, "SWQCF"},
        {"KX41", "5", 9, "EV1MOD EV1WAIT SWQCF"}, {"KX91", "5", 9, "VQAL1 VQ1DB EV1MOD EV1WAIT SWQCF"},
        {"KX91", "3", 9, "EV1MOD EV1WAIT SWQCF"},
    };
    for (const auto& [family, alarm, range, expected] : rows) {
        QStringList items{kRange.arg(range), QString("PQKAL1|Data|") + alarm, "SWQCF|Bit|0"};
        for (const char* tag : {"VQLIL", "SVDOT", "VQAL1", "VQ1DB", "VQAL2", "EV1MOD", "EV1WAIT", "EV2MOD", "OTHER"})
            items.insert(items.size() - 1, QString(tag) + "|Data|0");
        build(items, QString(family) + "000000-10A");
        kx.refreshSpread(false, nullptr);
        QStringList locked;
        for (const auto& one : kx.items()) {
            if (grid.cell(one->Row(), one->Col()).locked)
                locked << one->Key();
        }
        EXPECT_EQ(locked.join(u' '), expected) << family << alarm << range;
    }
}

} // namespace
