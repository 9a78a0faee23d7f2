#include "LastState.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "SlaveRange.h"
#include "clsINI.h"
#include "clsLibrary.h"

namespace {

const QString kMainSection = QStringLiteral("Setting");
const QString kModelNo = QStringLiteral("LastModelNo");
const QString kSlave = QStringLiteral("LastSlaveAdr");
const QString kMode = QStringLiteral("LastModebusMode");
const QString kModelString = QStringLiteral("LastModelString");
constexpr int kMaxModelNo = 9999;

} // namespace

LastState LastState::load(clsLibrary& library)
{
    clsINI ini = mainSettings(library.context());
    // A number that no controller or catalogue can have counts as damaged.
    const auto number = [&](const QString& key, int fallback, int least, int most) {
        const int stored = library.toLong(ini.GetIniData(kMainSection, key, QString::number(fallback)), fallback);
        return stored >= least && stored <= most ? stored : fallback;
    };
    LastState state;
    state.modelNo = number(kModelNo, state.modelNo, 1, kMaxModelNo);
    state.slaveAddress = number(kSlave, state.slaveAddress, slaverange::kFirst, slaverange::kLast);
    state.transmissionMode = number(kMode, state.transmissionMode, 0, 1);
    state.modelString = ini.GetIniData(kMainSection, kModelString, QString());
    return state;
}

void LastState::save(clsLibrary& library) const
{
    IniBatch batch(library.context());
    library.saveINIParam(kMainSection, kModelNo, modelNo);
    library.saveINIParam(kMainSection, kSlave, slaveAddress);
    library.saveINIParam(kMainSection, kMode, transmissionMode);
    library.saveINIParam(kMainSection, kModelString, modelString);
    batch.commitLogged();
}
