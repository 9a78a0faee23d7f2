#include "LanguageChoice.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

void LanguageChoice::load(const clsLibrary& library)
{
    *this = {};
    m_inUse = library.context().languageFile;
    const QString section = QStringLiteral("Language");
    clsINI ini = mainSettings(library.context());
    IniBatch batch(library.context());
    const QString count = ini.GetIniData(section, QStringLiteral("LanguageMax"), QStringLiteral("1"));
    const int last = std::clamp(library.toLong(count, 1), 0, kMaxLanguages);
    for (int n = 1; n <= last; ++n) {
        m_texts << ini.GetIniData(section, QStringLiteral("Language%1").arg(n), QStringLiteral("Japanese"));
        m_files << ini.GetIniData(section, QStringLiteral("LanguageFile%1").arg(n), QStringLiteral("JP.txt"));
        if (m_files.last() == m_inUse)
            m_positionInUse = n - 1;
    }
    batch.commitLogged();
}
