#include "ModelCodes.h"

#include "FileLocations.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

namespace modelcodes {

QStringList installed(const clsLibrary& library)
{
    const QString section = QStringLiteral("KXInfos");
    clsINI ini = mainSettings(library.context());
    const platform::ProfileStore::Batch batch(library.context().machine.profiles);
    const QString count = ini.GetIniData(section, QStringLiteral("KXMaxCount"), QStringLiteral("0"));
    const int last = std::clamp(library.toLong(count, 0), 0, kMaxModels);
    QStringList codes;
    for (int n = 1; n <= last; ++n)
        codes << ini.GetIniData(section, QStringLiteral("KXModel%1").arg(n), QStringLiteral("KX%1").arg(n));
    return codes;
}

Selection select(const QString& modelString, const QStringList& codes)
{
    if (modelString == kNothing)
        return {Match::NoAnswer, -1};
    if (modelString.size() < kModelStringLength)
        return {};
    const QString wanted = modelString.left(kCodeLength);
    for (int i = 0; i < codes.size(); ++i) {
        if (codes[i].left(kCodeLength) == wanted)
            return {Match::Found, i};
    }
    return {};
}

QString handPicked(const QString& code)
{
    return code + QStringLiteral("00000-10A");
}

} // namespace modelcodes
