#include "OptionExpression.h"

#include <gtest/gtest.h>

namespace {

// Options of this model: 1 -> "A", 2 -> "B", 6 -> "0".
TEST(OptionOn, DecidesWhetherBuilt)
{
    const std::tuple<const char*, const char*, bool, bool> rows[] = {
        {"EmptyShown", "", true, true},
        {"SpacesHidden", "   ", false, false},
        {"OneOfList", "1=X,A", false, true},
        {"AllTerms", "1=A&6=0", true, true},
        {"OneTermFails", "1=A&6=1", true, false},
        {"CaseMatters", "1=a", true, false},
        {"SpacesBelongToTerms", "1=A &6=0", true, false},
        {"NoDigit", "x=A", true, false},
        {"NoSuchDigit", "9=Q", true, false},
    };
    for (const auto& [name, expression, visible, built] : rows)
        EXPECT_EQ(isOptionOn(expression, visible, "KX41ABCDE--0YZQ"), built) << name;
}

} // namespace
