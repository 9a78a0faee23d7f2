#include "OptionExpression.h"

#include <gtest/gtest.h>

namespace {

struct TextCase
{
    int index;
    const char16_t* expected;
};

class OptionText : public ::testing::TestWithParam<TextCase>
{};

TEST_P(OptionText, PicksPartOfModelString)
{
    EXPECT_EQ(optionText(QStringLiteral("KX4123456789012"), GetParam().index), QString::fromUtf16(GetParam().expected));
    EXPECT_EQ(optionText(QStringLiteral("ZZ1123456789012"), GetParam().index), QString());
}

INSTANTIATE_TEST_SUITE_P(Positions, OptionText,
                         ::testing::Values(TextCase{-1, u"KX4"}, TextCase{0, u"KX41"}, TextCase{1, u"2"},
                                           TextCase{5, u"6"}, TextCase{6, u"9"}, TextCase{8, u"1"}, TextCase{9, u""},
                                           TextCase{-2, u""}));

struct ExpressionCase
{
    const char* name;
    const char16_t* expression;
    bool visible;
    bool built;
};

class OptionOn : public ::testing::TestWithParam<ExpressionCase>
{};

TEST_P(OptionOn, DecidesWhetherBuilt)
{
    // Options of this model: 1 -> "A", 2 -> "B", 6 -> "0".
    const QString model = QStringLiteral("KX41ABCDE--0YZ");
    EXPECT_EQ(isOptionOn(QString::fromUtf16(GetParam().expression), GetParam().visible, model), GetParam().built);
}

INSTANTIATE_TEST_SUITE_P(Expressions, OptionOn,
                         ::testing::Values(ExpressionCase{"EmptyShown", u"", true, true},
                                           ExpressionCase{"EmptyHidden", u"", false, false},
                                           ExpressionCase{"SpacesHidden", u"   ", false, false},
                                           ExpressionCase{"Use", u"USE", false, true},
                                           ExpressionCase{"OneOfList", u"1=X,A", false, true},
                                           ExpressionCase{"NoneOfList", u"1=X,Y", true, false},
                                           ExpressionCase{"AllTerms", u"1=A&6=0", true, true},
                                           ExpressionCase{"OneTermFails", u"1=A&6=1", true, false},
                                           ExpressionCase{"AnySeparator", u"1:A", true, true},
                                           ExpressionCase{"CaseMatters", u"1=a", true, false},
                                           ExpressionCase{"SpacesBelongToTerms", u"1=A &6=0", true, false},
                                           ExpressionCase{"NoDigit", u"x=A", true, false}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
