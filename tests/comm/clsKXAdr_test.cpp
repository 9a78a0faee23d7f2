#include "clsKXAdr.h"

#include "TestMachine.h"
#include "clsLibrary.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

class Image : public ::testing::Test
{
protected:
    void load(const QByteArray& comm)
    {
        const QString folder = library.getIniFilePath(QString());
        QFile file(box.path(folder) + QStringLiteral("/C.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(comm);
        file.close();
        image.load(folder, QStringLiteral("C.ini"), QStringLiteral("S"), &library);
    }

    TestMachine box;
    clsLibrary library{box.context};
    clsKXAdr image;
};

const QString kHigh = QStringLiteral("FBC2");

TEST_F(Image, TextsAreInTheCodePageWhetherLoadedOrNot)
{
    image.setData({1, "KX\xB1 "});
    EXPECT_EQ(image.getString(QString(), 4, QString()), QStringLiteral("KX\uFF71 "));
    load("[S]\nReadCmd1=Direct,FBC0,4\n");
    image.setData({1, "KX\xB1 "});
    EXPECT_EQ(image.getString(QString(), 4, QString()), QStringLiteral("KX\uFF71 "));
}

TEST_F(Image, DamagedCountsAreBounded)
{
    EXPECT_THROW(load("[S]\nReadCmdMax=many\n"), std::invalid_argument);
    load("[S]\nReadCmdMax=2147483647\nWriteCmdMax=-1\n");
    EXPECT_EQ(image.MsgMax(), 0);
    EXPECT_EQ(image.WMsgMax(), 0);
    load("[S]\nReadCmd1=Direct,0,2147483647\n");
    EXPECT_EQ(image.getOrgData().size(), clsKXAdr::kMaxImageBytes + 1);
}

TEST_F(Image, WriteImageBecomesOriginalOnlyByCopy)
{
    load("[S]\nReadCmd1=Direct,FBC0,8\n");
    image.setInteger(kHigh, 0x1234);
    EXPECT_EQ(image.getWriteData(false).at(3), 0x12);
    EXPECT_EQ(image.getInteger(kHigh, 9), 0);
    image.setCopy();
    EXPECT_EQ(image.getInteger(kHigh, 9), 0x1234);
    EXPECT_EQ(image.getByte(kHigh), 0x12);
    image.setSingle(QStringLiteral("FBC4"), -1.5F);
    image.setCopy();
    EXPECT_EQ(image.getSingle(QStringLiteral("FBC4"), 0), -1.5F);
    EXPECT_EQ(image.getLong(QStringLiteral("FBC4"), 0), static_cast<qint32>(0xBFC00000));
}

TEST_F(Image, AddressesOutsideDoNothing)
{
    load("[S]\nReadCmd1=Direct,FBC0,4\n");
    image.setData({1, QByteArray::fromHex("0102030405")});
    for (const char16_t* address : {u"FBBF", u"FBC5", u"0", u"FFFFFFFF", u"xyz", u""}) {
        const QString text = QString::fromUtf16(address);
        image.setInteger(text, -1);
        image.setSingle(text, 1);
        image.setBit(text, 1, true);
        image.setCopy();
    }
    EXPECT_EQ(image.getOrgData(), QByteArray::fromHex("0102030400"));
    EXPECT_EQ(image.getInteger(QStringLiteral("FBC4"), 0), 0x0500) << "a missing byte counts as 0";
}

TEST_F(Image, BitsByMask)
{
    load("[S]\nReadCmd1=Direct,0,1\n");
    const QString place = QStringLiteral("0");
    const auto after = [&](quint8 start, int mask, bool on) {
        image.setByte(place, start);
        image.setBit(place, mask, on);
        image.setCopy();
        return image.getByte(place);
    };
    EXPECT_EQ(after(1, 4, true), 5);
    EXPECT_EQ(after(5, 4, false), 1);
    EXPECT_EQ(after(4, 6, false), 4) << "only the whole mask is taken away";
    EXPECT_EQ(image.getBit(place, 4, 0), 1);
    EXPECT_EQ(image.getBit(place, 0, 0), 0);
    image.setByte(place, 3);
    image.acceptBits(place, 1);
    EXPECT_EQ(image.getByte(place), 5) << "the bit that was taken, beside what was held";
}

} // namespace
