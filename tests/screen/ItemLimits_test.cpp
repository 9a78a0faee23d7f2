#include "ScreenFixture.h"
#include "Table.h"

#include <QStringList>

namespace {

TEST(Comparison, ComparesInSinglePrecision)
{
    for (const QStringList& row : tableRows("screen/comparisons.tsv"))
        EXPECT_EQ(compareNumbers(row[0], row[1], row[2]), row[3] == u"1") << qPrintable(row.join(u' '));
}

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

TEST_F(Screen, LimitsFollowTagAndOtherItems)
{
    for (const QStringList& row : tableRows("screen/limits.tsv")) {
        build(row[1].isEmpty() ? QStringList(row[2]) : QStringList({row[2], row[1]}));
        const clsData& item = *kx.items().front();
        EXPECT_EQ(QStringList({item.LimitL(), item.SignL(), item.SignH(), item.LimitH()}).join(u' '), row[3])
            << qPrintable(row[0]);
    }
}

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

TEST_F(Screen, EntryIsScaledAndMarked)
{
    for (const EntryCase& row : {EntryCase{"SinglePrecision", "A|Data|0|2,0,0,<=,<=", "12.34", "1234"},
                                 EntryCase{"NoNumber", "A|Data|7|1,0,0,<=,<=", "abc", "0"},
                                 EntryCase{"UnknownTypeScales", "A|Odd|7|1,0,0,<=,<=", "3", "30"},
                                 EntryCase{"TextKeepsStored", "A|String|old|1,0,0,<=,<=", "new", "old"}}) {
        SCOPED_TRACE(row.name);
        build({QString::fromLatin1(row.item)});
        clsData& item = *kx.items().front();
        item.setVData(QString::fromLatin1(row.typed));
        EXPECT_EQ(item.Data(), QString::fromLatin1(row.stored));
        EXPECT_EQ(item.Edit, EditState::kChanged);
        EXPECT_TRUE(item.SprFontBold());
    }
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

TEST_F(Screen, LocksFollowRangeAlarmTypeAndFamily)
{
    for (const LockCase& row : {LockCase{"Thermocouple", "KX41000000-10A", "1", false, "VQLIL SVDOT"},
                                LockCase{"Voltage", "KX41000000-10A", "1", true, "SWQCF"},
                                LockCase{"OtherFamilyKeepsAlarms", "KX41000000-10A", "5", true, "EV1MOD EV1WAIT SWQCF"},
                                LockCase{"PlainType", "KX91000000-10A", "5", true, "VQAL1 VQ1DB EV1MOD EV1WAIT SWQCF"},
                                LockCase{"TypeThree", "KX91000000-10A", "3", true, "EV1MOD EV1WAIT SWQCF"}}) {
        SCOPED_TRACE(row.name);
        QStringList items{row.voltage ? kVoltageRange : kCelsiusRange,
                          QStringLiteral("PQKAL1|Data|") + QString::fromLatin1(row.alarmType)};
        for (const char* tag : {"VQLIL", "SVDOT", "VQAL1", "VQ1DB", "VQAL2", "EV1MOD", "EV1WAIT", "EV2MOD", "OTHER"})
            items << QString::fromLatin1(tag) + QStringLiteral("|Data|0");
        items << QStringLiteral("SWQCF|Bit|0");
        build(items, QString::fromLatin1(row.model));
        kx.refreshSpread(false, nullptr);
        QStringList locked;
        for (const auto& item : kx.items()) {
            if (grid.cell(item->Row(), item->Col()).locked)
                locked << item->Key();
        }
        EXPECT_EQ(locked.join(u' '), QString::fromLatin1(row.locked));
    }
}

} // namespace
