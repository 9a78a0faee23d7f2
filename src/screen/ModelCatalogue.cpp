#include "ModelCatalogue.h"

#include "FileLocations.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const QString kSection = QStringLiteral("KXInfos");
const QString kCount = QStringLiteral("KXMaxCount");

} // namespace

ModelCatalogue::ModelCatalogue(clsLibrary& library) : m_library(library) {}

void ModelCatalogue::ensureBuiltIn()
{
    clsINI ini = mainSettings(m_library.context());
    if (ini.GetIniData(kSection, kCount, QStringLiteral("0")) != u"0")
        return;
    platform::ProfileStore::Batch batch(m_library.context().machine.profiles);
    const QStringList codes{QStringLiteral("KX410"), QStringLiteral("KX413"), QStringLiteral("KX620"),
                            QStringLiteral("KX623"), QStringLiteral("KX640"), QStringLiteral("KX643"),
                            QStringLiteral("KX910")};
    ini.PutIniData(kSection, kCount, static_cast<int>(codes.size()));
    for (int i = 1; i <= codes.size(); ++i) {
        const QString& code = codes[i - 1];
        ini.PutIniData(kSection, QStringLiteral("KXModel%1").arg(i), code);
        ini.PutIniData(kSection, QStringLiteral("KXName%1").arg(i), code);
        ini.PutIniData(kSection, QStringLiteral("KXCommFile%1").arg(i), code + QStringLiteral("Comm.ini"));
        ini.PutIniData(kSection, QStringLiteral("KXScreenFile%1").arg(i), code + QStringLiteral("Screen.ini"));
    }
}

ModelEntry ModelCatalogue::entry(int number)
{
    clsINI ini = mainSettings(m_library.context());
    const auto text = [&](const char16_t* key) {
        return ini.GetIniData(kSection, QString::fromUtf16(key) + QString::number(number), QString());
    };
    ModelEntry entry;
    entry.number = number;
    entry.code = text(u"KXModel");
    entry.screenFile = text(u"KXScreenFile");
    entry.commFile = text(u"KXCommFile");
    entry.name = text(u"KXName");
    return entry;
}

std::vector<ModelEntry> ModelCatalogue::all()
{
    clsINI ini = mainSettings(m_library.context());
    const int stored = m_library.toLong(ini.GetIniData(kSection, kCount, QStringLiteral("0")), 0);
    const int count = std::clamp(stored, 0, kMaxModels);
    const platform::ProfileStore::Batch batch(m_library.context().machine.profiles);
    std::vector<ModelEntry> entries;
    for (int n = 1; n <= count; ++n)
        entries.push_back(entry(n));
    return entries;
}

int ModelCatalogue::numberOf(const QString& code)
{
    for (const ModelEntry& candidate : all()) {
        if (candidate.code == code)
            return candidate.number;
    }
    return 0;
}
