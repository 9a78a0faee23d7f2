#include "ScreenFixture.h"
#include "Table.h"

namespace {

using Item = ScreenFixture;

TEST_F(Item, ShowsItsValueByTypeAndDecimals)
{
    for (const QStringList& row : tableRows("screen/display_values.tsv")) {
        put(definition("MultiSelect.ini"),
            "[C]\nData1=0,1,0\nName1=K 0-400vbTabx\nData2=0,9,0\nName2=1-5V DCvbTabx\nName3=Test\n"
            "[K]\nData1=0,1,0\nName1=K 273-673vbTabx\nName2=Test\n[A]\nData1=0,2,0\nName1=HighvbTabx\nName2=Test\n");
        load(screenOf({row[1].toUtf8(), "Tag=SVDOT\nCellData=2,1,vbWhite,vbBlack\nDefaultData=2",
                       "Tag=PQKAL2\nCellData=3,1,vbWhite,vbBlack\nDefaultData=2",
                       "Tag=ZERO\nCellData=4,1,vbWhite,vbBlack\nDefaultData=0"}) +
             "[EVDOT]\nLastIndex=2\n0=0,1,2,3\n1=4,4,4,4\n2=5,3,1,0\n");
        kx.items().front()->setData(row[2]);
        EXPECT_EQ(kx.items().front()->VData(), row[3]) << qPrintable(row[0]);
    }
}

TEST_F(Item, VoltageRangeGivesInputLimitsThreePlaces)
{
    put(definition("MultiSelect.ini"), "[C]\nData1=0,9,0\nName1=1-5V DCvbTabx\nName2=Test\n");
    load(screenOf({"Tag=VQLIZS\nDataInfo=1,0,1,<=,<=,0,10\nDefaultData=5000",
                   "Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nDefaultData=9"}));
    EXPECT_EQ(item("VQLIZS").VData(), u"5.000");
    kx.setData("PQRNO", "1", false);
    EXPECT_EQ(item("VQLIZS").VData(), u"500.0");
}

TEST_F(Item, EveryStoredValueComesBackFromItsText)
{
    for (int places = 0; places <= 5; ++places) {
        load(screenOf({"DataLen=2\nDataInfo=" + QByteArray::number(places) + ",0,1,<=,<=,0,10"}));
        const clsData& one = *kx.items().front();
        int wrong = 0;
        for (int value = -32768; value <= 32767; ++value) {
            const QString stored = QString::number(value);
            wrong += one.storedOf(one.displayOf(stored)) == stored ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0) << places << " places";
    }
}

TEST_F(Item, DecimalCircleThroughTwoItemsEnds)
{
    load(screenOf(
        {"Tag=A\nDataInfo=DOTB,0,1,<=,<=,0,10\nDefaultData=1", "Tag=B\nDataInfo=DOTA,0,1,<=,<=,0,10\nDefaultData=1"}));
    EXPECT_FALSE(item("A").VData().isEmpty());
}

} // namespace
