#include "clsKXAdr.h"

#include "Table.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

class Image : public ::testing::Test
{
protected:
    void load(const QByteArray& comm)
    {
        const QString folder = library.getIniFilePath(QString());
        ASSERT_TRUE(box.put(folder + QStringLiteral("\\C.ini"), comm));
        image.load(folder, QStringLiteral("C.ini"), QStringLiteral("S"), &library);
    }

    TestMachine box;
    clsLibrary library{box.context};
    clsKXAdr image;
};

const QString kHigh = QStringLiteral("FBC2");

TEST_F(Image, TextsAreInTheCodePageWhetherLoadedOrNot)
{
    for (int i = 0; i < 2; ++i) {
        image.setData({1, "KX\xB1 "});
        EXPECT_EQ(image.getString(QString(), 4, QString()), QStringLiteral("KX\uFF71 "));
        load("[S]\nReadCmd1=Direct,FBC0,4\n");
    }
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

TEST_F(Image, CommandLists)
{
    for (const QStringList& row : tableRows("comm/command_lists.tsv")) {
        SCOPED_TRACE(row[0].toStdString());
        load("[S]\n" + row[1].toLatin1().replace(';', '\n') + '\n');
        EXPECT_EQ(image.hasReads(), !row[2].isEmpty());
        EXPECT_EQ(image.isCommandsOnly(), !row[3].isEmpty());
        EXPECT_EQ(image.writeFault(1), row[4]);
    }
}

TEST_F(Image, HoldsWhatItsReadsBring)
{
    load("[S]\nReadCmd1=Direct,FBC0,4\nWriteCmd1=Direct,FBC0,4\n");
    for (const auto& [address, length, holds] :
         {std::tuple(u"FBC0", 4, true), std::tuple(u"FBC3", 1, true), std::tuple(u"FBC3", 2, false),
          std::tuple(u"FBBF", 1, false), std::tuple(u"", 1, false)})
        EXPECT_EQ(image.holds(QString::fromUtf16(address), length), holds) << qPrintable(QString::fromUtf16(address));
    image.setData({1, QByteArray::fromHex("01020304")});
    image.setInteger(kHigh, 0x5566);
    image.accept(kHigh, 1);
    EXPECT_EQ(image.getOrgData().toHex(), "0102550400") << "what was taken, and no more";
    image.resetWrite();
    EXPECT_EQ(image.getWriteData(true).bytes.toHex(), "0102550400");
    load("[S]\nReadCmd1=GetAnalogSet,40001,1,A\n");
    EXPECT_TRUE(image.holds(QString(), 2) && !image.holds(QString(), 4)) << "one register";
    image.setInteger(QString(), 258);
    image.markFilled();
    image.setInteger(QString(), 7);
    image.resetWrite();
    EXPECT_EQ(image.getInteger(QString(), 0), 258) << "as it was read";
    EXPECT_EQ(image.getByte(QString()), 2);
    image.setInteger(QString(), 7);
    image.accept(QString(), 2);
    image.resetWrite();
    EXPECT_EQ(image.getInteger(QString(), 0), 7) << "as it was written";
}

TEST_F(Image, WriteImageBecomesOriginalOnlyByCopy)
{
    load("[S]\nReadCmd1=Direct,FBC0,8\n");
    image.setInteger(kHigh, 0x1234);
    image.setSingle(QStringLiteral("FBC4"), -1.5F);
    EXPECT_EQ(image.getWriteData(false).at(3), 0x12);
    EXPECT_EQ(image.getInteger(kHigh, 9), 0);
    image.setCopy();
    EXPECT_EQ(image.getInteger(kHigh, 9), 0x1234);
    EXPECT_EQ(image.getByte(kHigh), 0x12);
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
    for (const auto& [start, mask, on, after] :
         {std::tuple(1, 4, true, 5), std::tuple(5, 4, false, 1), std::tuple(4, 6, false, 4)}) {
        image.setByte(place, static_cast<quint8>(start));
        image.setBit(place, mask, on);
        image.setCopy();
        EXPECT_EQ(image.getByte(place), after) << "only the whole mask is taken away";
    }
    EXPECT_EQ(image.getBit(place, 4, 0), 1);
    EXPECT_EQ(image.getBit(place, 0, 0), 0);
    image.setByte(place, 3);
    image.acceptBits(place, 1);
    EXPECT_EQ(image.getByte(place), 5) << "the bit that was taken, beside what was held";
}

} // namespace
