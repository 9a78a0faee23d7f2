#include "FormPlacement.h"
#include "GridModel.h"
#include "Table.h"
#include "TestMachine.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

#include <map>

namespace {

const QString kPlacesFile = "C:\\Users\\AppData\\Vorlan\\VorlantPos.ini";
const QRect kScreen(0, 0, 28800, 16200); // 1920 x 1080

struct PlacedForm : platform::FormPlacement
{
    QString name() const override { return "frmTest"; }
    QString id() const override { return {}; }
    platform::WindowState windowState() const override { return state; }
    QRect boundsTwips() const override { return bounds; }
    void setBoundsTwips(const QRect& to) override { bounds = to; }
    std::optional<int> splitLeftTwips() const override { return splitLeft; }
    void setSplitLeftTwips(int left) override { splitLeft = left; }
    QVector<QRect> screensTwips() const override { return screens; }

    platform::WindowState state = platform::WindowState::Normal;
    QRect bounds{0, 0, 9000, 6000}; // as designed
    std::optional<int> splitLeft;
    QVector<QRect> screens{1, kScreen};
};

class WindowPlace : public ::testing::Test
{
protected:
    WindowPlace() { library.getIniFilePath("Main"); } // makes the folder
    void load(PlacedForm& form, const QString& keys) const
    {
        box.put(kPlacesFile, "[frmTest]\r\n" + keys.toLatin1());
        library.loadFormSize(form);
    }

    TestMachine box;
    clsLibrary library{box.context};
};

TEST_F(WindowPlace, ComesBackWithItsSplitterUnlessItWasNotNormal)
{
    PlacedForm form;
    form.bounds = {1500, 750, 12000, 7500};
    form.splitLeft = 3000;
    library.saveFormSize(form);
    const QByteArray saved = box.content(kPlacesFile);
    EXPECT_EQ(saved, "[frmTest]\r\nLEFT=1500\r\nTOP=750\r\nWIDTH=12000\r\nHEIGHT=7500\r\nSPLITLEFT=3000\r\n");
    PlacedForm next;
    next.splitLeft = 100;
    library.loadFormSize(next);
    EXPECT_EQ(next.bounds, form.bounds);
    EXPECT_EQ(next.splitLeft, 3000);
    form.bounds = kScreen;
    for (const auto state : {platform::WindowState::Minimized, platform::WindowState::Maximized}) {
        form.state = state;
        library.saveFormSize(form);
        EXPECT_EQ(box.content(kPlacesFile), saved);
    }
}

TEST_F(WindowPlace, AbsurdSplitterStaysAsItIs)
{
    for (const char* stored : {"-1", "9001", "middle", "99999999999"}) {
        PlacedForm form;
        form.splitLeft = 3000;
        load(form, QString("SPLITLEFT=") + stored);
        EXPECT_EQ(form.splitLeft, 3000) << stored;
    }
}

TEST_F(WindowPlace, BringsTheWindowWhereItCanBeUsed)
{
    const std::map<QString, QVector<QRect>> screens = {{"", {kScreen}},
                                                       {"beside", {kScreen, {28800, 0, 19200, 15360}}},
                                                       {"left", {kScreen, {-28800, 0, 28800, 16200}}},
                                                       {"panel", {{0, 450, 28800, 15750}}}};
    for (const QStringList& row : tableRows("infra/window_places.tsv")) {
        PlacedForm form;
        form.screens = screens.at(row[6]);
        load(form, QString("LEFT=%1\r\nTOP=%2\r\nWIDTH=%3\r\nHEIGHT=%4").arg(row[1], row[2], row[3], row[4]));
        const QRect& at = form.bounds;
        EXPECT_EQ(QString("%1,%2,%3,%4").arg(at.left()).arg(at.top()).arg(at.width()).arg(at.height()), row[5])
            << qPrintable(row[0]);
    }
}

TEST_F(WindowPlace, AbsurdColumnWidthsAreLeftOut)
{
    platform::GridModel grid;
    grid.setMaxCols(2);
    const std::pair<const char*, double> rows[] = {{"-3", 8}, {"1e30", 8}, {"nan", 8}, {"0", 0}, {"500", 500}};
    for (const auto& [stored, width] : rows) {
        grid.setColWidth(1, 8);
        box.put(kPlacesFile, QByteArray("[Main]\r\nSPCOLWIDTH1=") + stored);
        library.loadColSize(grid, "Main", QString());
        EXPECT_EQ(grid.colWidth(1), width) << stored;
    }
}

} // namespace
