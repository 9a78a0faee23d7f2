#include "Dates.h"
#include "Numbers.h"

#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

// The recorded outputs of the platform's own functions, one test for each line.
QList<QStringList> recorded(const QString& kind)
{
    QFile file(QStringLiteral(VORLANT_TEST_DATA "/platform/numbers.tsv"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QList<QStringList> rows;
    while (!file.atEnd()) {
        const QStringList fields = QString::fromLatin1(file.readLine()).remove(u'\n').split(u'\t');
        if (fields.first() == kind)
            rows << fields;
    }
    EXPECT_FALSE(rows.isEmpty());
    return rows;
}

template <typename Number> QString shown(const std::optional<Number>& value)
{
    if (!value)
        return QStringLiteral("err");
    if constexpr (std::is_same_v<Number, float>)
        return QString::number(static_cast<double>(*value), 'g', 9);
    else if constexpr (std::is_same_v<Number, double>)
        return QString::number(*value, 'g', 17);
    else
        return QString::number(*value);
}

void expectRecorded(const QString& actual, const QString& expected, const QStringList& row)
{
    EXPECT_TRUE(expected == u"?" || actual == expected) << qPrintable(row.join(u'|') + u'>' + actual);
}

TEST(Numbers, ParseAsRecorded)
{
    for (const QStringList& row : recorded(QStringLiteral("parse"))) {
        const QString& text = row[1];
        expectRecorded(shown(platform::parseInt32(text)), row[2], row);
        expectRecorded(shown(platform::parseInt16(text)), row[3], row);
        expectRecorded(shown(platform::parseSingle(text)), row[4], row);
        expectRecorded(shown(platform::parseDouble(text)), row[5], row);
    }
}

TEST(Numbers, PointIsMovedExactly)
{
    struct
    {
        const char* text;
        int places;
        const char* exact;
        const char* whole;
    } const rows[] = {
        {"9.98", 2, "998", "998"},
        {"8.44", 2, "844", "844"},
        {"12.345", 2, "1234.5", "1234"},
        {"12.355", 2, "1235.5", "1236"},
        {"12.3450001", 2, "1234.50001", "1235"},
        {"-0.5", 0, "-0.5", "0"},
        {"-1.5", 0, "-1.5", "-2"},
        {".5", 5, "50000", "50000"},
        {"1e1", 1, "100", "100"},
        {" 1,234.50 ", 1, "12345", "12345"},
        {"99.99", 1, "999.9", "1000"},
        {"0.0004", 2, "0.04", "0"},
        {"1e-99", 2, "0", "0"},
        {"&hFF", 1, "2550", "2550"},
        {"+007", 0, "7", "7"},
        {"16777217", 5, "1677721700000", "1677721700000"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(platform::scaledText(QLatin1String(row.text), row.places, false).value_or("none").toStdString(),
                  row.exact)
            << row.text;
        EXPECT_EQ(platform::scaledText(QLatin1String(row.text), row.places, true).value_or("none").toStdString(),
                  row.whole)
            << row.text;
    }
    for (const char* none : {"", "abc", "1e39", "1.2.3"})
        EXPECT_FALSE(platform::scaledText(QLatin1String(none), 1, true)) << none;
}

TEST(Numbers, SingleTextAsRecorded)
{
    for (const QStringList& row : recorded(QStringLiteral("single")))
        EXPECT_EQ(platform::singleText(row[1].toFloat()), row[2]) << qPrintable(row.join(u'|'));
}

TEST(Numbers, FormatAsRecorded)
{
    for (const QStringList& row : recorded(QStringLiteral("format")))
        EXPECT_EQ(platform::formatSingle(row[2].toFloat(), row[1]), row[3]) << qPrintable(row.join(u'|'));
}

TEST(Numbers, DatesAsRecorded)
{
    for (const QStringList& row : recorded(QStringLiteral("date")))
        EXPECT_EQ(platform::formatDate(QDateTime::fromString(row[2], Qt::ISODate), row[1]), row[3]);
}

TEST(Numbers, OddTextsAreRefused)
{
    for (const char16_t* text :
         {u".", u"-", u"e5", u"&h-1", u"&hFFFFFFFFF", u"1e", u"１２", u"nan", u"inf", u",1", u"--1"})
        EXPECT_FALSE(platform::parseDouble(QString::fromUtf16(text))) << qPrintable(QString::fromUtf16(text));
}

} // namespace
