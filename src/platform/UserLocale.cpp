#include "UserLocale.h"

namespace platform {

namespace {

struct LanguageId
{
    QLocale::Language language;
    const char16_t* code;
};

// Primary language identifiers, as the platform's registry of languages numbers them.
constexpr LanguageId kLanguages[] = {
    {QLocale::Arabic, u"01"},     {QLocale::Bulgarian, u"02"},
    {QLocale::Catalan, u"03"},    {QLocale::Chinese, u"04"},
    {QLocale::Czech, u"05"},      {QLocale::Danish, u"06"},
    {QLocale::German, u"07"},     {QLocale::Greek, u"08"},
    {QLocale::English, u"09"},    {QLocale::Spanish, u"0A"},
    {QLocale::Finnish, u"0B"},    {QLocale::French, u"0C"},
    {QLocale::Hebrew, u"0D"},     {QLocale::Hungarian, u"0E"},
    {QLocale::Icelandic, u"0F"},  {QLocale::Italian, u"10"},
    {QLocale::Japanese, u"11"},   {QLocale::Korean, u"12"},
    {QLocale::Dutch, u"13"},      {QLocale::NorwegianBokmal, u"14"},
    {QLocale::Polish, u"15"},     {QLocale::Portuguese, u"16"},
    {QLocale::Romanian, u"18"},   {QLocale::Russian, u"19"},
    {QLocale::Croatian, u"1A"},   {QLocale::Slovak, u"1B"},
    {QLocale::Albanian, u"1C"},   {QLocale::Swedish, u"1D"},
    {QLocale::Thai, u"1E"},       {QLocale::Turkish, u"1F"},
    {QLocale::Urdu, u"20"},       {QLocale::Indonesian, u"21"},
    {QLocale::Ukrainian, u"22"},  {QLocale::Slovenian, u"24"},
    {QLocale::Estonian, u"25"},   {QLocale::Latvian, u"26"},
    {QLocale::Lithuanian, u"27"}, {QLocale::Vietnamese, u"2A"},
};

QString codeOf(QLocale::Language language)
{
    for (const LanguageId& known : kLanguages) {
        if (known.language == language)
            return QString::fromUtf16(known.code);
    }
    return QStringLiteral("00");
}

QString separatorIn(const QString& pattern, QChar fallback)
{
    for (const QChar c : pattern) {
        if (!c.isLetter() && c != u'\'')
            return QString(c);
    }
    return QString(fallback);
}

UserLocale::DateOrder orderOf(const QString& pattern)
{
    const QString lower = pattern.toLower();
    if (lower.startsWith(u'm'))
        return UserLocale::DateOrder::MonthDayYear;
    return lower.startsWith(u'd') ? UserLocale::DateOrder::DayMonthYear : UserLocale::DateOrder::YearMonthDay;
}

QString codeText(const QString& separator)
{
    return separator.isEmpty() ? QString() : QString::number(separator.front().unicode());
}

} // namespace

UserLocale::UserLocale(const QLocale& locale)
    : m_languageCode(codeOf(locale.language())),
      m_dateSeparator(separatorIn(locale.dateFormat(QLocale::ShortFormat), u'/')),
      m_dateOrder(orderOf(locale.dateFormat(QLocale::ShortFormat))), m_decimalCode(codeText(locale.decimalPoint())),
      m_timeCode(codeText(separatorIn(locale.timeFormat(QLocale::ShortFormat), u':')))
{}

QString UserLocale::shortDate() const
{
    switch (m_dateOrder) {
    case DateOrder::MonthDayYear:
        return QStringLiteral("MM/DD/YYYY");
    case DateOrder::DayMonthYear:
        return QStringLiteral("DD/MM/YYYY");
    case DateOrder::YearMonthDay:
        break;
    }
    return QStringLiteral("YYYY/MM/DD");
}

} // namespace platform
