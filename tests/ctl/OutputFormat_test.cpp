#include "OutputFormat.h"

#include "TextTable.h"
#include "VisibleText.h"

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
                            QChar(0xFEFF) + QChar(0) + QChar(0xD800);
    const std::vector<ParameterRow> rows{{QStringLiteral("T"), hostile, QString(), QString(), QString(), false}};
    const std::string shown = "a\\x09\\x1b[2J\\x9b2<U+202E>b<U+FEFF>\\x00<U+D800>";
    EXPECT_EQ(formatParameters(rows, OutputFormat::Csv).toStdString(),
              "tag,name,block,value,data\r\nT," + shown + ",,,\r\n");
    EXPECT_NE(formatParameters(rows, OutputFormat::Table).toStdString().find("T    " + shown + '\n'),
              std::string::npos);
    const QByteArray json = formatParameters(rows, OutputFormat::Json);
    EXPECT_TRUE(json.contains("a\\t\\u001b[2J\\u009b2\\u202eb\\ufeff\\u0000\\ud800")) << json.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(json)[0][u"name"].toString().left(12), hostile.left(12));
}

// What a spreadsheet would calculate is marked as text; numbers stay numbers.
TEST(OutputFormat, CsvHoldsNoFormulas)
{
    const struct
    {
        const char16_t* value;
        const char* field;
    } rows[] = {{u"=1+1", "'=1+1"},
                {u"@SUM(A1)", "'@SUM(A1)"},
                {u"+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
                {u"-1+2", "'-1+2"},
                {u"-", "'-"},
                {u"-&H10", "'-&H10"},
                {u"=1,\"2\"", "\"'=1,\"\"2\"\"\""},
                {u"\t=1", "'\\x09=1"},
                {u"\r=1", "'\\x0d=1"},
                {u"＝1", "'＝1"},
                {u"-12.50", "-12.50"},
                {u"+3", "+3"},
                {u"-.5", "-.5"},
                {u"-1.2E+07", "-1.2E+07"},
                {u"-inf", "'-inf"},
                {u"12", "12"},
                {u"a=1", "a=1"}};
    for (const auto& row : rows) {
        const QString value = QString::fromUtf16(row.value);
        SCOPED_TRACE(qPrintable(value));
        EXPECT_EQ(formatRows({{QStringLiteral("v")}, {{value}}, {}}, OutputFormat::Csv).toStdString(),
                  std::string("v\r\n") + row.field + "\r\n");
    }
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
        EXPECT_EQ(platform::displayWidth(QString::fromUcs4(row.text)), row.columns);
    }
}

} // namespace
