#include "ItemStore.h"
#include "ScreenFixture.h"

namespace {

class Store : public ScreenFixture
{};

TEST_F(Store, OnlyWhatIsEditedChangesItsBytes)
{
    load("[Setting]\nDataMaxCount=2\nMaxRow=3\n" +
             dataSection(1, "Tag=GAIN\nDataLen=4\nKXAddress=8000\nCommRaedSection=Main\nCommWriteSection=Main\n"
                            "DataInfo=2,0,1,<=,<=,0,10") +
             dataSection(2, "Tag=HOURS\nReadOnly=True\nDataLen=1\nKXAddress=8004\nCommRaedSection=Main\n"
                            "CommWriteSection=Main"),
         "[Main]\nReadCmd1=Direct,8000,5\nWriteCmd1=Direct,8000,5\n");
    clsKXAdr& image = kx.ColAdr().at(0);
    const auto bytes = [&image] { return image.getWriteData(true).bytes.left(5).toHex().toStdString(); };
    image.setData(IndexedBytes{1, QByteArray::fromHex("4453000107")}); // 844.00006
    image.markFilled();
    kx.refreshSpread(true, nullptr);
    clsData& gain = *kx.getDataByTag(QStringLiteral("GAIN"));
    EXPECT_EQ(gain.Data(), u"844.0001");
    EXPECT_TRUE(storeInImage(gain, image));
    EXPECT_EQ(bytes(), "4453000107") << "the text has fewer digits than the bytes";
    gain.setVData(QStringLiteral("8.44"));
    EXPECT_TRUE(storeInImage(gain, image));
    EXPECT_EQ(bytes(), "4453000007");
    EXPECT_EQ(heldText(gain, QStringLiteral("1234567.89")), u"1234568");

    clsData& hours = *kx.getDataByTag(QStringLiteral("HOURS"));
    EXPECT_TRUE(grid.cell(hours.Row(), hours.Col()).readOnly);
    hours.setData(QStringLiteral("9"));
    EXPECT_FALSE(storeInImage(hours, image));
    EXPECT_EQ(bytes(), "4453000007");
}

} // namespace
