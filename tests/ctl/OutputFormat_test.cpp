#include "OutputFormat.h"

#include "TextTable.h"

#include <gtest/gtest.h>

namespace {

const std::vector<ParameterRow> kRows{
    {QStringLiteral("VQSV1"), QStringLiteral("設定値"), QStringLiteral("SV"), QStringLiteral("25.8"),
     QStringLiteral("258"), false},
    {QStringLiteral("MQCODE"), QStringLiteral("a \"b\", c\nd"), QString(), QString(), QString(), true},
};

TEST(OutputFormat, CsvQuotesWhatNeedsIt)
{
    EXPECT_EQ(formatParameters(kRows, OutputFormat::Csv).toStdString(), "tag,name,block,value,data\r\n"
                                                                        "VQSV1,設定値,SV,25.8,258\r\n"
                                                                        "MQCODE,\"a \"\"b\"\", c\nd\",,,\r\n");
}

TEST(OutputFormat, TableCountsFullWidthTwice)
{
    EXPECT_EQ(formatParameters(kRows, OutputFormat::Table).toStdString(), "Tag     Name        Block  Value  Data\n"
                                                                          "VQSV1   設定値      SV     25.8   258\n"
                                                                          "MQCODE  a \"b\", c d\n");
}

struct Width
{
    const char* name;
    const char32_t* text;
    int columns;
};

TEST(DisplayWidth, InColumns)
{
    for (const Width& row : {Width{"HalfWidthKana", U"ｱｲ", 2}, Width{"CombiningMark", U"e\u0301", 1},
                             Width{"BeyondTheFirstPlane", U"\U00020000", 2}}) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(displayWidth(QString::fromUcs4(row.text)), row.columns);
    }
}

} // namespace
