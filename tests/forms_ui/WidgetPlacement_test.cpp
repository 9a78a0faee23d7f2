#include "RegisteredControls.h"
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
