#include "OptionExpression.h"

#include <gtest/gtest.h>

namespace {

struct ExpressionCase
{
    const char* name;
    const char16_t* expression;
    bool visible;
    bool built;
};

TEST(OptionOn, DecidesWhetherBuilt)
{
    for (const ExpressionCase& row :
         {ExpressionCase{"EmptyShown", u"", true, true}, ExpressionCase{"SpacesHidden", u"   ", false, false},
          ExpressionCase{"OneOfList", u"1=X,A", false, true}, ExpressionCase{"AllTerms", u"1=A&6=0", true, true},
          ExpressionCase{"OneTermFails", u"1=A&6=1", true, false}, ExpressionCase{"CaseMatters", u"1=a", true, false},
          ExpressionCase{"SpacesBelongToTerms", u"1=A &6=0", true, false},
          ExpressionCase{"NoDigit", u"x=A", true, false}, ExpressionCase{"NoSuchDigit", u"9=Q", true, false}}) {
        SCOPED_TRACE(row.name);
        // Options of this model: 1 -> "A", 2 -> "B", 6 -> "0".
        const QString model = QStringLiteral("KX41ABCDE--0YZQ");
        EXPECT_EQ(isOptionOn(QString::fromUtf16(row.expression), row.visible, model), row.built);
    }
}

} // namespace
