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
                                                                        "MQCODE,\"a \"\"b\"\", c\\x0ad\",,,\r\n");
}

TEST(OutputFormat, TableCountsFullWidthTwice)
{
    EXPECT_EQ(formatParameters(kRows, OutputFormat::Table).toStdString(), "Tag     Name           Block  Value  Data\n"
                                                                          "VQSV1   設定値         SV     25.8   258\n"
                                                                          "MQCODE  a \"b\", c\\x0ad\n");
}

// As text in a terminal; JSON gives back what there was.
TEST(OutputFormat, ControlCharactersAreShown)
{
    const QString hostile = QStringLiteral("a\t\x1b[2J\u009b"
                                           "2\u202Eb") +
                            QChar(0) + QChar(0xD800);
    const std::vector<ParameterRow> rows{{QStringLiteral("T"), hostile, QString(), QString(), QString(), false}};
    const std::string shown = "a\\x09\\x1b[2J\\x9b2<U+202E>b\\x00<U+D800>";
    EXPECT_EQ(formatParameters(rows, OutputFormat::Csv).toStdString(),
              "tag,name,block,value,data\r\nT," + shown + ",,,\r\n");
    EXPECT_NE(formatParameters(rows, OutputFormat::Table).toStdString().find("T    " + shown + '\n'),
              std::string::npos);
    const QByteArray json = formatParameters(rows, OutputFormat::Json);
    EXPECT_TRUE(json.contains("a\\t\\u001b[2J\\u009b2\\u202eb\\u0000\\ud800")) << json.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(json)[0][u"name"].toString().left(11), hostile.left(11));
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
