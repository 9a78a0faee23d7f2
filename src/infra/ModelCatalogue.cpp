#include "ModelCatalogue.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

const QString kModels = QStringLiteral("KXInfos");
const QString kCount = QStringLiteral("KXMaxCount");

const QStringList kBuiltIn{QStringLiteral("KX410"), QStringLiteral("KX413"), QStringLiteral("KX620"),
                           QStringLiteral("KX623"), QStringLiteral("KX640"), QStringLiteral("KX643"),
                           QStringLiteral("KX910")};

ModelEntry builtIn(int number)
{
    const QString code = kBuiltIn.value(number - 1);
    if (code.isEmpty())
        return {number, {}, {}, {}, {}};
    ModelEntry entry;
    entry.number = number;
    entry.code = code;
    entry.screenFile = code + QStringLiteral("Screen.ini");
    entry.commFile = code + QStringLiteral("Comm.ini");
    entry.name = code;
    return entry;
}

// Where settings cannot be kept the models are those that would stand there.
bool isStored(clsINI& ini)
{
    return ini.GetIniData(kModels, kCount, QStringLiteral("0")) != u"0";
}

} // namespace

ModelCatalogue::ModelCatalogue(const clsLibrary& library) : m_library(library) {}

void ModelCatalogue::ensureBuiltIn()
{
    clsINI ini = mainSettings(m_library.context());
    if (isStored(ini))
        return;
    IniBatch batch(m_library.context());
    ini.PutIniData(kModels, kCount, static_cast<int>(kBuiltIn.size()));
    for (int i = 1; i <= kBuiltIn.size(); ++i) {
        const ModelEntry entry = builtIn(i);
        ini.PutIniData(kModels, QStringLiteral("KXModel%1").arg(i), entry.code);
        ini.PutIniData(kModels, QStringLiteral("KXName%1").arg(i), entry.name);
        ini.PutIniData(kModels, QStringLiteral("KXCommFile%1").arg(i), entry.commFile);
        ini.PutIniData(kModels, QStringLiteral("KXScreenFile%1").arg(i), entry.screenFile);
    }
    batch.commitLogged();
}

ModelEntry ModelCatalogue::entry(int number)
{
    clsINI ini = mainSettings(m_library.context());
    const auto text = [&](const char16_t* key) {
        return ini.GetIniData(kModels, QString::fromUtf16(key) + QString::number(number), QString());
    };
    ModelEntry entry;
    entry.number = number;
    entry.code = text(u"KXModel");
    entry.screenFile = text(u"KXScreenFile");
    entry.commFile = text(u"KXCommFile");
    entry.name = text(u"KXName");
    return entry.code.isEmpty() && !isStored(ini) ? builtIn(number) : entry;
}

std::vector<ModelEntry> ModelCatalogue::all()
{
    clsINI ini = mainSettings(m_library.context());
    const QString stored = ini.GetIniData(kModels, kCount, QStringLiteral("0"));
    const int count =
        isStored(ini) ? std::clamp(m_library.toLong(stored, 0), 0, kMaxModels) : static_cast<int>(kBuiltIn.size());
    IniBatch batch(m_library.context());
    std::vector<ModelEntry> entries;
    for (int n = 1; n <= count; ++n)
        entries.push_back(entry(n));
    batch.commitLogged();
    return entries;
}

QStringList ModelCatalogue::codes()
{
    QStringList codes;
    for (const ModelEntry& entry : all())
        codes << (entry.code.isEmpty() ? QStringLiteral("KX%1").arg(entry.number) : entry.code);
    return codes;
}

int ModelCatalogue::numberOf(const QString& code)
{
    for (const ModelEntry& candidate : all()) {
        if (candidate.code == code)
            return candidate.number;
    }
    return 0;
}
