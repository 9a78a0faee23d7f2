#include "LanguageList.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "Translator.h"

#include <algorithm>

namespace {

const QString kLanguages = QStringLiteral("Language");
const QString kInfo = QStringLiteral("Info");

} // namespace

void LanguageList::rebuild(const QString& userLanguageCode)
{
    const QString folder = Translator::folder(m_context);
    clsINI settings = mainSettings(m_context);
    IniBatch batch(m_context);
    QString found;
    int count = 0;
    const QStringList files = m_context.machine.paths.filesIn(folder);
    for (const QString& file : files) {
        if (!Translator::isUsable(m_context, file))
            continue;
        clsINI language(m_context);
        language.setIniPath(folder);
        if (!language.setIniFileOrNone(file))
            continue;
        const auto info = [&language](const char16_t* key) {
            return language.GetIniData(kInfo, QString::fromUtf16(key), QString(), true);
        };
        if (info(u"LocaleID") == userLanguageCode)
            found = file;
        const QString name = info(u"Name");
        if (name.isEmpty())
            continue;
        ++count;
        settings.PutIniData(kLanguages, QStringLiteral("Language%1").arg(count),
                            QStringLiteral("%1  [%2  Ver(%3)]").arg(name, file, info(u"Version")));
        settings.PutIniData(kLanguages, QStringLiteral("LanguageFile%1").arg(count), file);
    }
    m_defaultFile = found.isEmpty() ? QStringLiteral("EN.txt") : found;
    if (count == 0) {
        settings.PutIniData(kLanguages, QStringLiteral("Language1"), QStringLiteral("Japanese"));
        settings.PutIniData(kLanguages, QStringLiteral("LanguageFile1"), QStringLiteral("JP.txt"));
    }
    settings.PutIniData(kLanguages, QStringLiteral("LanguageMax"), std::max(count, 1));
    batch.commitLogged();
}
