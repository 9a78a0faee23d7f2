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
    {QLocale::Arabic, u"01"},
    {QLocale::Bulgarian, u"02"},
    {QLocale::Catalan, u"03"},
    {QLocale::Chinese, u"04"},
    {QLocale::Czech, u"05"},
    {QLocale::Danish, u"06"},
    {QLocale::German, u"07"},
    {QLocale::Greek, u"08"},
    {QLocale::English, u"09"},
    {QLocale::Spanish, u"0A"},
    {QLocale::Finnish, u"0B"},
    {QLocale::French, u"0C"},
    {QLocale::Hebrew, u"0D"},
    {QLocale::Hungarian, u"0E"},
    {QLocale::Icelandic, u"0F"},
    {QLocale::Italian, u"10"},
    {QLocale::Japanese, u"11"},
    {QLocale::Korean, u"12"},
    {QLocale::Dutch, u"13"},
    {QLocale::NorwegianBokmal, u"14"},
    {QLocale::NorwegianNynorsk, u"14"},
    {QLocale::Polish, u"15"},
    {QLocale::Portuguese, u"16"},
    {QLocale::Romansh, u"17"},
    {QLocale::Romanian, u"18"},
    {QLocale::Russian, u"19"},
    {QLocale::Croatian, u"1A"},
    {QLocale::Serbian, u"1A"},
    {QLocale::Bosnian, u"1A"},
    {QLocale::Slovak, u"1B"},
    {QLocale::Albanian, u"1C"},
    {QLocale::Swedish, u"1D"},
    {QLocale::Thai, u"1E"},
    {QLocale::Turkish, u"1F"},
    {QLocale::Urdu, u"20"},
    {QLocale::Indonesian, u"21"},
    {QLocale::Ukrainian, u"22"},
    {QLocale::Belarusian, u"23"},
    {QLocale::Slovenian, u"24"},
    {QLocale::Estonian, u"25"},
    {QLocale::Latvian, u"26"},
    {QLocale::Lithuanian, u"27"},
    {QLocale::Tajik, u"28"},
    {QLocale::Persian, u"29"},
    {QLocale::Vietnamese, u"2A"},
    {QLocale::Armenian, u"2B"},
    {QLocale::Azerbaijani, u"2C"},
    {QLocale::Basque, u"2D"},
    {QLocale::UpperSorbian, u"2E"},
    {QLocale::LowerSorbian, u"2E"},
    {QLocale::Macedonian, u"2F"},
    {QLocale::SouthernSotho, u"30"},
    {QLocale::Tsonga, u"31"},
    {QLocale::Tswana, u"32"},
    {QLocale::Venda, u"33"},
    {QLocale::Xhosa, u"34"},
    {QLocale::Zulu, u"35"},
    {QLocale::Afrikaans, u"36"},
    {QLocale::Georgian, u"37"},
    {QLocale::Faroese, u"38"},
    {QLocale::Hindi, u"39"},
    {QLocale::Maltese, u"3A"},
    {QLocale::NorthernSami, u"3B"},
    {QLocale::SouthernSami, u"3B"},
    {QLocale::LuleSami, u"3B"},
    {QLocale::InariSami, u"3B"},
    {QLocale::SkoltSami, u"3B"},
    {QLocale::Irish, u"3C"},
    {QLocale::Yiddish, u"3D"},
    {QLocale::Malay, u"3E"},
    {QLocale::Kazakh, u"3F"},
    {QLocale::Kyrgyz, u"40"},
    {QLocale::Swahili, u"41"},
    {QLocale::Turkmen, u"42"},
    {QLocale::Uzbek, u"43"},
    {QLocale::Tatar, u"44"},
    {QLocale::Bangla, u"45"},
    {QLocale::Punjabi, u"46"},
    {QLocale::Gujarati, u"47"},
    {QLocale::Odia, u"48"},
    {QLocale::Tamil, u"49"},
    {QLocale::Telugu, u"4A"},
    {QLocale::Kannada, u"4B"},
    {QLocale::Malayalam, u"4C"},
    {QLocale::Assamese, u"4D"},
    {QLocale::Marathi, u"4E"},
    {QLocale::Sanskrit, u"4F"},
    {QLocale::Mongolian, u"50"},
    {QLocale::Tibetan, u"51"},
    {QLocale::Dzongkha, u"51"},
    {QLocale::Welsh, u"52"},
    {QLocale::Khmer, u"53"},
    {QLocale::Lao, u"54"},
    {QLocale::Burmese, u"55"},
    {QLocale::Galician, u"56"},
    {QLocale::Konkani, u"57"},
    {QLocale::Manipuri, u"58"},
    {QLocale::Sindhi, u"59"},
    {QLocale::Syriac, u"5A"},
    {QLocale::Sinhala, u"5B"},
    {QLocale::Cherokee, u"5C"},
    {QLocale::Inuktitut, u"5D"},
    {QLocale::Amharic, u"5E"},
    {QLocale::CentralAtlasTamazight, u"5F"},
    {QLocale::Kashmiri, u"60"},
    {QLocale::Nepali, u"61"},
    {QLocale::WesternFrisian, u"62"},
    {QLocale::Pashto, u"63"},
    {QLocale::Filipino, u"64"},
    {QLocale::Divehi, u"65"},
    {QLocale::Fulah, u"67"},
    {QLocale::Hausa, u"68"},
    {QLocale::Yoruba, u"6A"},
    {QLocale::NorthernSotho, u"6C"},
    {QLocale::Quechua, u"6B"},
    {QLocale::Bashkir, u"6D"},
    {QLocale::Luxembourgish, u"6E"},
    {QLocale::Kalaallisut, u"6F"},
    {QLocale::Igbo, u"70"},
    {QLocale::Kanuri, u"71"},
    {QLocale::Oromo, u"72"},
    {QLocale::Tigrinya, u"73"},
    {QLocale::Guarani, u"74"},
    {QLocale::Hawaiian, u"75"},
    {QLocale::Latin, u"76"},
    {QLocale::Somali, u"77"},
    {QLocale::SichuanYi, u"78"},
    {QLocale::Papiamento, u"79"},
    {QLocale::Mapuche, u"7A"},
    {QLocale::Mohawk, u"7C"},
    {QLocale::Breton, u"7E"},
    {QLocale::Uyghur, u"80"},
    {QLocale::Maori, u"81"},
    {QLocale::Occitan, u"82"},
    {QLocale::Corsican, u"83"},
    {QLocale::SwissGerman, u"84"},
    {QLocale::Sakha, u"85"},
    {QLocale::Kinyarwanda, u"87"},
    {QLocale::Wolof, u"88"},
    {QLocale::Gaelic, u"91"},
    {QLocale::CentralKurdish, u"92"},
};

QString codeOf(QLocale::Language language)
{
    for (const LanguageId& known : kLanguages) {
        if (known.language == language)
            return QString::fromUtf16(known.code);
    }
    return QStringLiteral("00");
}

// By the order of the locale's own pattern.
QString fourDigitPattern(const QString& pattern)
{
    const QString lower = pattern.toLower();
    if (lower.startsWith(u'm'))
        return QStringLiteral("MM/DD/YYYY");
    return lower.startsWith(u'd') ? QStringLiteral("DD/MM/YYYY") : QStringLiteral("YYYY/MM/DD");
}

} // namespace

UserLocale::UserLocale(const QLocale& locale)
    : m_languageCode(codeOf(locale.language())), m_shortDate(fourDigitPattern(locale.dateFormat(QLocale::ShortFormat)))
{}

} // namespace platform
