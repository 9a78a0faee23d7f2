#include "DesktopTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace platform {

namespace {

// Primary language identifiers of Windows ([MS-LCID], 2.1) that the program is likely to be translated into.
QString localeOf(const QString& languageCode)
{
    static const std::pair<const char16_t*, const char*> kLocales[] = {{u"11", "ja"}, {u"07", "de"}, {u"0A", "es"},
                                                                       {u"0C", "fr"}, {u"12", "ko"}, {u"04", "zh_CN"}};
    for (const auto& [code, locale] : kLocales) {
        if (languageCode.compare(QStringView(code), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(locale);
    }
    return {};
}

} // namespace

void translateDesktopDialogs(const QString& languageCode)
{
    static QTranslator* translator = nullptr;
    if (translator != nullptr)
        translator->deleteLater(); // which takes it out
    translator = nullptr;
    const QString locale = localeOf(languageCode);
    if (locale.isEmpty())
        return;
    translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QStringLiteral("qtbase_") + locale, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

} // namespace platform
