#include "PlaceBeside.h"
#include "RegisteredControls.h"
#include "ScreenFit.h"
#include "WidgetPlacement.h"

#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

TEST(WidgetPlacement, MovesAndReadsInTwips)
{
    QWidget window;
    platform::WidgetPlacement place(window, QStringLiteral("frmTest"), QStringLiteral("3"));
    place.setBoundsTwips({1500, 750, 6007, 4508}); // not whole pixels
    EXPECT_EQ(window.pos(), QPoint(100, 50));
    EXPECT_EQ(window.size(), QSize(400, 301));
    window.show();
    EXPECT_EQ(place.boundsTwips(), QRect(1500, 750, 6000, 4515));
    EXPECT_EQ(place.name() + place.id(), u"frmTest3");
    EXPECT_FALSE(place.splitLeftTwips());
}

TEST(PlaceBeside, CoversLeastAndKeepsTheTitleBarInside)
{
    const QRect room(100, 50, 1000, 600);
    const std::tuple<QRect, QSize, QPoint> rows[] = {
        {{100, 50, 400, 300}, {500, 400}, {500, 50}},    // at the right
        {{700, 150, 400, 300}, {500, 400}, {200, 150}},  // at the left
        {{100, 50, 1000, 100}, {500, 400}, {100, 150}},  // below
        {{100, 550, 1000, 100}, {500, 400}, {100, 150}}, // above
        {{100, 50, 600, 600}, {500, 400}, {600, 50}},    // over its right part
        {{100, 50, 600, 600}, {1200, 900}, {100, 50}},   // has no room at all
        {{0, 0, 2000, 2000}, {500, 400}, {600, 50}}};    // one larger than the screen
    for (const auto& [other, window, place] : rows)
        EXPECT_EQ(platform::placeBeside(other, window, room), place) << place.x() << ',' << place.y();
}

// A dialog that needs more room than there is: at the bottom a button, which the keyboard still reaches.
TEST(ScreenFit, KeepsWindowsOnTheScreen)
{
    const platform::ScreenFit fit;
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* tall = new QComboBox(&dialog);
    tall->addItems({QStringLiteral("9600bps"), QStringLiteral("19200bps")});
    tall->setMinimumHeight(5000);
    auto* button = new QPushButton(QStringLiteral("OK"), &dialog);
    layout->addWidget(tall);
    layout->addWidget(button);
    dialog.move(-3000, -200);
    dialog.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.frameGeometry()));
    tall->setFocus();
    QWidget& area = *dialog.findChild<QScrollArea*>()->viewport();
    QTest::keyClick(tall, Qt::Key_Tab);
    EXPECT_EQ(dialog.focusWidget(), button);
    EXPECT_TRUE(area.rect().contains(button->mapTo(&area, button->rect().center())));
    QWheelEvent turn({5, 5}, tall->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(tall, &turn);
    EXPECT_EQ(tall->currentIndex(), 0) << "the wheel scrolls, and chooses nothing";

    QWidget window;
    window.setGeometry(50, -300, 20000, 10000);
    window.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.frameGeometry()));
}

TEST(RegisteredWidget, FontSizeOfALanguageFileIsBounded)
{
    QWidget widget;
    platform::RegisteredWidget control(widget, QStringLiteral("w"), {}, platform::ControlKind::Plain);
    const std::pair<const char*, double> rows[] = {{"20", 20}, {"-1", 20}, {"x", 20}, {"1E9", 96}, {"0.5", 4}};
    for (const auto& [text, expected] : rows) {
        control.setProperty(platform::FormProperty::FontSize, QLatin1String(text));
        EXPECT_EQ(widget.font().pointSizeF(), expected) << text;
    }
}

} // namespace
