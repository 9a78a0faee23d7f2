#include "WidgetPlacement.h"

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

} // namespace
