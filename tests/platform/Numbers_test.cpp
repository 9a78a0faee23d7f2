#include "Dates.h"
#include "Numbers.h"
#include "Table.h"

#include <gtest/gtest.h>

namespace {

// Of the outputs that were recorded of the platform's own functions, those of one kind.
QList<QStringList> recorded(const QString& kind)
{
    QList<QStringList> rows = tableRows("platform/numbers.tsv");
    rows.removeIf([&kind](const QStringList& row) { return row.first() != kind; });
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
    for (const QStringList& row : tableRows("platform/scaled.tsv")) {
        EXPECT_EQ(platform::scaledText(row[0], row[1].toInt(), false), row[2]) << qPrintable(row[0]);
        EXPECT_EQ(platform::scaledText(row[0], row[1].toInt(), true), row[3]) << qPrintable(row[0]);
    }
    for (const char* none : {"", "abc", "1e39", "1.2.3"})
        EXPECT_FALSE(platform::scaledText(QLatin1String(none), 1, true)) << none;
}

TEST(Numbers, TextsAsRecorded)
{
    for (const QStringList& row : recorded(QStringLiteral("single")))
        expectRecorded(platform::singleText(row[1].toFloat()), row[2], row);
    for (const QStringList& row : recorded(QStringLiteral("format")))
        expectRecorded(platform::formatSingle(row[2].toFloat(), row[1]), row[3], row);
    for (const QStringList& row : recorded(QStringLiteral("date")))
        expectRecorded(platform::formatDate(QDateTime::fromString(row[2], Qt::ISODate), row[1]), row[3], row);
}

TEST(Numbers, OddTextsAreRefused)
{
    for (const char16_t* text :
         {u".", u"-", u"e5", u"&h-1", u"&hFFFFFFFFF", u"1e", u"１２", u"nan", u"inf", u",1", u"--1"})
        EXPECT_FALSE(platform::parseDouble(QString::fromUtf16(text))) << qPrintable(QString::fromUtf16(text));
}

} // namespace
