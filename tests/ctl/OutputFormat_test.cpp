#include "OutputFormat.h"

#include "TextTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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

TEST(OutputFormat, JsonKeepsItemOrderAndText)
{
    const QByteArray bytes = formatParameters(kRows, OutputFormat::Json);
    EXPECT_TRUE(bytes.startsWith("[\n  {\"tag\":\"VQSV1\",\"name\":\"設定値\",\"block\":\"SV\"")) << bytes.data();
    const QJsonArray array = QJsonDocument::fromJson(bytes).array();
    ASSERT_EQ(array.size(), 2);
    EXPECT_EQ(array[0].toObject()[QStringLiteral("data")].toString(), u"258");
    EXPECT_EQ(array[1].toObject()[QStringLiteral("name")].toString(), kRows[1].name);
    EXPECT_FALSE(array[0].toObject().contains(QStringLiteral("changed")));
    EXPECT_TRUE(array[1].toObject()[QStringLiteral("changed")].toBool());
}

TEST(OutputFormat, NothingIsStillJson)
{
    EXPECT_EQ(formatParameters({}, OutputFormat::Json), "[]\n");
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

class DisplayWidth : public ::testing::TestWithParam<Width>
{};

TEST_P(DisplayWidth, InColumns)
{
    EXPECT_EQ(displayWidth(QString::fromUcs4(GetParam().text)), GetParam().columns);
}

INSTANTIATE_TEST_SUITE_P(Cases, DisplayWidth,
                         ::testing::Values(Width{"Latin", U"KX410", 5}, Width{"Degree", U"°C", 2},
                                           Width{"HalfWidthKana", U"ｱｲ", 2}, Width{"FullWidthLatin", U"ＳＶ", 4},
                                           Width{"Celsius", U"温度", 4}, Width{"CombiningMark", U"e\u0301", 1},
                                           Width{"BeyondTheFirstPlane", U"\U00020000", 2}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
