#include "FormPlacement.h"
#include "Table.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

namespace {

const QString kFile = QStringLiteral("C:\\Users\\AppData\\Vorlan\\VorlantPos.ini");
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
    WindowPlace() { library.getIniFilePath(QStringLiteral("Main")); } // makes the folder
    QByteArray content() const { return box.content(kFile); }
    void store(const QByteArray& keys) const { ASSERT_TRUE(box.put(kFile, "[frmTest]\r\n" + keys)); }

    TestMachine box;
    clsLibrary library{box.context};
    FakeForm form;
};

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

TEST_F(WindowPlace, BringsTheWindowWhereItCanBeUsed)
{
    for (const QStringList& row : tableRows("infra/window_places.tsv")) {
        store(QStringLiteral("LEFT=%1\r\nTOP=%2\r\nWIDTH=%3\r\nHEIGHT=%4\r\n")
                  .arg(row[1], row[2], row[3], row[4])
                  .toLatin1());
        FakeForm stored;
        stored.screens = row[6] == u"beside" ? kBeside : row[6] == u"left" ? kOnTheLeft : stored.screens;
        stored.screens = row[6] == u"panel" ? kUnderAPanel : stored.screens;
        library.loadFormSize(stored);
        const QRect& at = stored.bounds;
        EXPECT_EQ(QStringLiteral("%1,%2,%3,%4").arg(at.left()).arg(at.top()).arg(at.width()).arg(at.height()), row[5])
            << qPrintable(row[0]);
    }
}

} // namespace
