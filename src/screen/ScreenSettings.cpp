#include "ScreenSettings.h"

#include "DefinitionLog.h"
#include "FontSize.h"
#include "Numbers.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const QString kSetting = QStringLiteral("Setting");
constexpr int kUsualFontSize = 11;

int presentSections(clsINI& ini, const QString& prefix)
{
    int count = 0;
    while (count < ScreenSettings::kMaxSections && ini.hasSection(prefix + QString::number(count + 1)))
        ++count;
    return count;
}

int readCount(clsINI& ini, const clsLibrary& library, const QString& key, const QString& prefix, DefinitionLog& log)
{
    const QString text = ini.GetIniData(kSetting, key, QStringLiteral("0"));
    const int count = library.toLong(text, 0);
    // Missing sections are written into the file: never more than it has of the kind. The measure does not change when
    // they are there.
    if (count >= 0 && count <= std::min(2 * ini.numberedSections(prefix), ScreenSettings::kMaxSections))
        return count;
    const int present = count < 0 ? 0 : presentSections(ini, prefix);
    log.add({{},
             kSetting,
             key,
             QStringLiteral("%1 is not a count, %2 sections are used").arg(text).arg(present),
             QStringLiteral("set it to the number of sections")});
    return present;
}

} // namespace

QString ScreenSettings::ext() const
{
    QString text = extension;
    return text.remove(u'.');
}

void ScreenSettings::loadSize(clsINI& ini, const clsLibrary& library)
{
    DefinitionLog log; // of nobody
    blockCount = readCount(ini, library, QStringLiteral("BlockMaxCount"), QStringLiteral("BlockInfo"), log);
    stringCount = readCount(ini, library, QStringLiteral("StringMaxCount"), QStringLiteral("Strings"), log);
    dataCount = readCount(ini, library, QStringLiteral("DataMaxCount"), QStringLiteral("Datas"), log);
    maxRow = library.toLong(ini.GetIniData(kSetting, QStringLiteral("MaxRow"), QStringLiteral("10")), 0);
    maxCol = library.toLong(ini.GetIniData(kSetting, QStringLiteral("MaxCol"), QStringLiteral("10")), 0);
}

void ScreenSettings::load(clsINI& ini, const clsLibrary& library, const QString& modelCode, DefinitionLog& log)
{
    extension = ini.GetIniData(kSetting, QStringLiteral("ExtName"), QString());
    dataPath = ini.GetIniData(kSetting, QStringLiteral("DataPath"), QString());
    blockCount = readCount(ini, library, QStringLiteral("BlockMaxCount"), QStringLiteral("BlockInfo"), log);
    stringCount = readCount(ini, library, QStringLiteral("StringMaxCount"), QStringLiteral("Strings"), log);
    dataCount = readCount(ini, library, QStringLiteral("DataMaxCount"), QStringLiteral("Datas"), log);
    const QString filter = modelCode + QStringLiteral("パラメータファイル(*.") + ext() + QStringLiteral(")|*.") + ext();
    dialogFilter = ini.GetIniData(kSetting, QStringLiteral("DialogFilter"), filter);
    fontName = ini.GetIniData(kSetting, QStringLiteral("DefaultFontName"), QStringLiteral("System"));
    const QString size = ini.GetIniData(kSetting, QStringLiteral("DefaultFontSize"), QString::number(kUsualFontSize));
    fontSize = platform::boundedFontSize(library.toDouble(size, 0), kUsualFontSize);
    backColor = ini.GetIniData(kSetting, QStringLiteral("DefaultBackColor"), QStringLiteral("vbWindowBackground"));
    foreColor = ini.GetIniData(kSetting, QStringLiteral("DefaultForeColor"), QStringLiteral("vbWindowText"));
    maxRow = library.toLong(ini.GetIniData(kSetting, QStringLiteral("MaxRow"), QStringLiteral("10")), 0);
    maxCol = library.toLong(ini.GetIniData(kSetting, QStringLiteral("MaxCol"), QStringLiteral("10")), 0);
}
