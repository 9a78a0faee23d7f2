#include "WidgetPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

using platform::WindowState;

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

TEST(WidgetPlacement, KnowsTheStateOfItsWindow)
{
    struct Row
    {
        const char* name;
        Qt::WindowStates shown;
        WindowState state;
    };
    QWidget window;
    const platform::WidgetPlacement place(window, QStringLiteral("frmTest"));
    for (const Row& row :
         {Row{"normal", Qt::WindowNoState, WindowState::Normal},
          Row{"minimised", Qt::WindowMinimized, WindowState::Minimized},
          Row{"minimised from maximised", Qt::WindowMinimized | Qt::WindowMaximized, WindowState::Minimized},
          Row{"maximised", Qt::WindowMaximized, WindowState::Maximized},
          Row{"whole screen", Qt::WindowFullScreen, WindowState::Maximized}}) {
        window.setWindowState(row.shown);
        EXPECT_EQ(place.windowState(), row.state) << row.name;
    }
}

TEST(WidgetPlacement, ScreensBeginWithThePrimaryOne)
{
    QWidget window;
    const auto screens = platform::WidgetPlacement(window, QString()).screensTwips();
    ASSERT_EQ(screens.size(), QGuiApplication::screens().size());
    const QRect primary = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(screens.first().topLeft(), primary.topLeft() * 15);
    EXPECT_EQ(screens.first().size(), primary.size() * 15);
}

} // namespace
