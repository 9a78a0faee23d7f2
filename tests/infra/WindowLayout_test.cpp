#include "FormPlacement.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

const QRect kScreen(0, 0, 28800, 16200); // 1920 x 1080

struct FakeForm : platform::FormPlacement
{
    QString name() const override { return QStringLiteral("frmTest"); }
    QString id() const override { return number; }
    platform::WindowState windowState() const override { return state; }
    QRect boundsTwips() const override { return bounds; }
    void setBoundsTwips(const QRect& to) override { bounds = to; }
    std::optional<int> splitLeftTwips() const override { return splitLeft; }
    void setSplitLeftTwips(int left) override { splitLeft = left; }
    QVector<QRect> screensTwips() const override { return screens; }

    QString number;
    platform::WindowState state = platform::WindowState::Normal;
    QRect bounds{0, 0, 9000, 6000}; // as designed
    std::optional<int> splitLeft;
    QVector<QRect> screens = {kScreen};
};

class WindowPlace : public ::testing::Test
{
protected:
    WindowPlace() { QDir().mkpath(box.path(QStringLiteral("C:\\Users\\AppData\\Vorlan"))); }
    QString path() const
    {
        return box.path(QStringLiteral("C:\\Users\\AppData\\Vorlan")) + QStringLiteral("/VorlantPos.ini");
    }
    QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    void store(const QByteArray& keys)
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[frmTest]\r\n" + keys);
    }

    TestMachine box;
    clsLibrary library{box.context};
    FakeForm form;
};

TEST_F(WindowPlace, FirstTimeIsCentredAndKeepsItsDefaults)
{
    library.loadFormSize(form);
    EXPECT_EQ(form.bounds, QRect(9900, 2040, 9000, 6000));
    EXPECT_EQ(content(), "[frmTest]\r\nLEFT=-100\r\nTOP=-100\r\nWIDTH=9000\r\nHEIGHT=6000\r\n");
}

TEST_F(WindowPlace, ComesBackWithItsSplitter)
{
    form.bounds = {1500, 750, 12000, 7500};
    form.splitLeft = 3000;
    library.saveFormSize(form);
    EXPECT_EQ(content(), "[frmTest]\r\nLEFT=1500\r\nTOP=750\r\nWIDTH=12000\r\nHEIGHT=7500\r\nSPLITLEFT=3000\r\n");
    FakeForm next;
    next.splitLeft = 100;
    library.loadFormSize(next);
    EXPECT_EQ(next.bounds, form.bounds);
    EXPECT_EQ(next.splitLeft, 3000);
}

TEST_F(WindowPlace, OnlyANormalWindowIsSaved)
{
    library.saveFormSize(form);
    const QByteArray before = content();
    form.bounds = kScreen;
    for (const auto state : {platform::WindowState::Minimized, platform::WindowState::Maximized}) {
        form.state = state;
        library.saveFormSize(form);
        EXPECT_EQ(content(), before);
    }
}

TEST_F(WindowPlace, EachIdHasItsSection)
{
    library.saveFormSize(form);
    form.number = QStringLiteral("2");
    form.bounds.moveTo(3000, 3000);
    library.saveFormSize(form);
    EXPECT_EQ(content(), "[frmTest]\r\nLEFT=0\r\nTOP=0\r\nWIDTH=9000\r\nHEIGHT=6000\r\n"
                         "[frmTest2]\r\nLEFT=3000\r\nTOP=3000\r\nWIDTH=9000\r\nHEIGHT=6000\r\n");
}

TEST_F(WindowPlace, AbsurdSplitterStaysAsItIs)
{
    for (const char* stored : {"-1", "9001", "middle", "99999999999"}) {
        form.splitLeft = 3000;
        store(QByteArray("SPLITLEFT=") + stored + "\r\n");
        library.loadFormSize(form);
        EXPECT_EQ(form.splitLeft, 3000) << stored;
    }
}

const QVector<QRect> kBeside = {kScreen, {28800, 0, 19200, 15360}};
const QVector<QRect> kOnTheLeft = {kScreen, {-28800, 0, 28800, 16200}};
const QVector<QRect> kUnderAPanel = {{0, 450, 28800, 15750}};

struct Stored
{
    const char* name;
    const char* left;
    const char* top;
    const char* width;
    const char* height;
    QRect shown;
    QVector<QRect> screens = {kScreen};
};

class StoredPlace : public WindowPlace, public ::testing::WithParamInterface<Stored>
{};

TEST_P(StoredPlace, BringsTheWindowWhereItCanBeUsed)
{
    const Stored& row = GetParam();
    store(QByteArray("LEFT=") + row.left + "\r\nTOP=" + row.top + "\r\nWIDTH=" + row.width +
          "\r\nHEIGHT=" + row.height + "\r\n");
    form.screens = row.screens;
    library.loadFormSize(form);
    EXPECT_EQ(form.bounds, row.shown) << form.bounds.left() << "," << form.bounds.top() << " " << form.bounds.width()
                                      << "x" << form.bounds.height();
}

INSTANTIATE_TEST_SUITE_P(
    Files, StoredPlace,
    ::testing::Values(
        Stored{"Sound", "1500", "750", "12000", "7500", {1500, 750, 12000, 7500}},
        Stored{"AtTheLimit", "-10", "-10", "9000", "6000", {-10, -10, 9000, 6000}},
        Stored{"LeftOfTheLimit", "-11", "0", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"AboveTheLimit", "0", "-11", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"PartlyBelow", "20000", "14000", "9000", "6000", {20000, 14000, 9000, 6000}},
        Stored{"TitleBelowTheScreen", "0", "16000", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"OnlyAnEdgeIsSeen", "28500", "0", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"FarAway", "2147483647", "2147483647", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"FarAwayBefore", "-2147483648", "0", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"TooLargeForANumber", "99999999999", "0", "99999999999", "6000", {9900, 2040, 9000, 6000}},
        Stored{"Words", "left", "top", "wide", "high", {9900, 2040, 9000, 6000}},
        Stored{"ZeroSize", "1500", "750", "0", "0", {1500, 750, 9000, 6000}},
        Stored{"NegativeSize", "1500", "750", "-9000", "-1", {1500, 750, 9000, 6000}},
        Stored{"TooSmallToUse", "1500", "750", "1799", "899", {1500, 750, 9000, 6000}},
        Stored{"JustUsable", "1500", "750", "1800", "900", {1500, 750, 1800, 900}},
        Stored{"WiderThanTheScreen", "1500", "750", "100000", "6000", {0, 2040, 28800, 6000}},
        Stored{"HugeSize", "0", "0", "15000000", "15000000", {0, 0, 28800, 16200}},
        Stored{"OnTheSecondScreen", "30000", "1500", "9000", "6000", {30000, 1500, 9000, 6000}, kBeside},
        Stored{"AcrossBoth", "6000", "1500", "40000", "6000", {6000, 1500, 40000, 6000}, kBeside},
        Stored{"SecondScreenIsGone", "30000", "1500", "9000", "6000", {9900, 2040, 9000, 6000}},
        Stored{"UnderTheShorterScreen", "35000", "15300", "9000", "600", {9900, 2040, 9000, 6000}, kBeside},
        Stored{"LeftScreen", "-20000", "1500", "9000", "6000", {-20000, 1500, 9000, 6000}, kOnTheLeft},
        Stored{"FirstTimeBesideALeftScreen", "-100", "-100", "9000", "6000", {9900, 2040, 9000, 6000}, kOnTheLeft},
        Stored{"BehindAPanel", "0", "0", "9000", "6000", {9900, 2400, 9000, 6000}, kUnderAPanel}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
