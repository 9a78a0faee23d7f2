#include "GridHint.h"

#include <gtest/gtest.h>

TEST(GridHint, FaultOfTheDefinitionIsSaidInPlaceOfAnEmptyGrid)
{
    const TranslateText english = [](const QString& text) { return text; };
    const QString model = QStringLiteral("KX410");
    const QString fault = QStringLiteral("the name is refused");
    EXPECT_EQ(gridHint(model, 0, fault, QStringLiteral("f.ini"), english), fault);
    EXPECT_TRUE(gridHint(model, 0, {}, QStringLiteral("f.ini"), english).contains(u"f.ini describes no parameters"));
    EXPECT_EQ(gridHint(model, 5, {}, QStringLiteral("f.ini"), english), QString());
}
