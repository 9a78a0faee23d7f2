#include "Dates.h"
#include "Numbers.h"
#include "Table.h"

#include <gtest/gtest.h>

namespace {

template <typename Number> QString shown(const std::optional<Number>& value)
{
    if (!value)
        return "err";
    if constexpr (std::is_floating_point_v<Number>)
        return QString::number(*value, 'g', std::numeric_limits<Number>::max_digits10);
    else
        return QString::number(*value);
}

// The outputs were recorded of the platform's own functions, "?" where it has none.
TEST(Numbers, AreReadAndWrittenAsRecorded)
{
    for (const QStringList& row : tableRows("platform/numbers.tsv")) {
        const QString& text = row[1];
        QStringList outputs;
        if (row[0] == u"parse")
            outputs << shown(platform::parseInt32(text)) << shown(platform::parseInt16(text))
                    << shown(platform::parseSingle(text)) << shown(platform::parseDouble(text));
        else if (row[0] == u"single")
            outputs << platform::singleText(text.toFloat());
        else if (row[0] == u"format")
            outputs << platform::formatSingle(row[2].toFloat(), text);
        else
            outputs << platform::formatDate(QDateTime::fromString(row[2], Qt::ISODate), text);
        const QStringList expected = row.mid(row.size() - outputs.size());
        for (qsizetype i = 0; i < outputs.size(); ++i)
            EXPECT_TRUE(expected[i] == u"?" || outputs[i] == expected[i]) << qPrintable(row.join('|') + outputs[i]);
    }
}

TEST(Numbers, PointIsMovedExactly)
{
    for (const QStringList& row : tableRows("platform/scaled.tsv")) {
        EXPECT_EQ(platform::scaledText(row[0], row[1].toInt(), false), row[2]) << qPrintable(row[0]);
        EXPECT_EQ(platform::scaledText(row[0], row[1].toInt(), true), row[3]) << qPrintable(row[0]);
    }
    for (const char* none : {"", "abc", "1e39", "1.2.3"})
        EXPECT_FALSE(platform::scaledText(none, 1, true)) << none;
}

TEST(Numbers, OddTextsAreRefused)
{
    for (const char* text : {".", "-", "e5", "&h-1", "&hFFFFFFFFF", "1e", "１２", "nan", "inf", ",1", "--1"})
        EXPECT_FALSE(platform::parseDouble(text)) << text;
}

} // namespace
