#include "OutputFormat.h"

#include <gtest/gtest.h>

namespace {

// As text in a terminal, and for a program that reads it again.
TEST(OutputFormat, QuotesAlignsAndShowsWhatIsNotSeen)
{
    const QString hostile = QString("a\t\x1b[2J\u009b2\u202Eb") + QChar(0xFEFF) + QChar(0) + QChar(0xD800);
    const std::vector<ParameterRow> rows{
        {"VQSV1", "設定値", "SV", "25.8", "258", false, "°C"},
        {"MQCODE", "a \"b\", c\nd", "", "", "", true},
        {"T", hostile, "", "", "", false},
    };
    EXPECT_EQ(formatParameters(rows, OutputFormat::Table).toStdString(),
              "Tag     Name                                            Block  Value    Data\n"
              "VQSV1   設定値                                          SV     25.8 °C  258\n"
              "MQCODE  a \"b\", c\\x0ad\n"
              "T       a\\x09\\x1b[2J\\x9b2<U+202E>b<U+FEFF>\\x00<U+D800>\n");
    EXPECT_EQ(formatParameters(rows, OutputFormat::Csv).toStdString(),
              "tag,name,block,value,data,unit\r\n"
              "VQSV1,設定値,SV,25.8,258,°C\r\n"
              "MQCODE,\"a \"\"b\"\", c\\x0ad\",,,,\r\n"
              "T,a\\x09\\x1b[2J\\x9b2<U+202E>b<U+FEFF>\\x00<U+D800>,,,,\r\n");
    const char* blanks = "\",\"block\":\"\",\"value\":\"\",\"data\":\"\",\"unit\":\"\"";
    EXPECT_EQ(formatParameters(rows, OutputFormat::Json).toStdString(),
              std::string("[\n  {\"tag\":\"VQSV1\",\"name\":\"設定値\",\"block\":\"SV\",\"value\":\"25.8\",\"data\":"
                          "\"258\",\"unit\":\"°C\"},\n  {\"tag\":\"MQCODE\",\"name\":\"a \\\"b\\\", c\\nd") +
                  blanks +
                  ",\"changed\":true},\n  {\"tag\":\"T\",\"name\":\"a\\t\\u001b[2J\\u009b2\\u202eb\\ufeff"
                  "\\u0000\\ud800" +
                  blanks + "}\n]\n");
    EXPECT_EQ(formatParameters({}, OutputFormat::Json).toStdString(), "[]\n");
}

// What a spreadsheet would calculate is marked as text; numbers stay numbers.
TEST(OutputFormat, CsvHoldsNoFormulas)
{
    const auto field = [](const QString& value) {
        return formatRows({{"v"}, {{value}}, {}}, OutputFormat::Csv).sliced(3).chopped(2);
    };
    for (const QString formula : {"=1+1", "@SUM(A1)", "-1+2", "+cmd|' /C calc'!A0", "-&H10", "＝1", "-inf"})
        EXPECT_EQ(field(formula), "'" + formula);
    for (const QString plain : {"-12.50", "-1.2E+07", "+3", "a=1"})
        EXPECT_EQ(field(plain), plain);
    EXPECT_EQ(field("=1,\"2\""), "\"'=1,\"\"2\"\"\"");
    EXPECT_EQ(field("\t=1"), "'\\x09=1");
    EXPECT_EQ(field("\r=1"), "'\\x0d=1");
}

} // namespace
