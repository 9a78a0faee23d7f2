#include "LastState.h"

#include "clsINI.h"
#include "clsLibrary.h"

namespace {

const QString kSection = QStringLiteral("Setting");
const QString kModelNo = QStringLiteral("LastModelNo");
const QString kSlave = QStringLiteral("LastSlaveAdr");
const QString kMode = QStringLiteral("LastModebusMode");
const QString kModelString = QStringLiteral("LastModelString");

} // namespace

LastState LastState::load(clsLibrary& library)
{
    clsINI ini(library.context());
    ini.setIniPath(library.getIniFilePath(QStringLiteral("Main")));
    ini.setIniFileName(library.getIniFileName(QString()));
    const auto number = [&](const QString& key, int fallback) {
        return library.toLong(ini.GetIniData(kSection, key, QString::number(fallback)), fallback);
    };
    LastState state;
    state.modelNo = number(kModelNo, state.modelNo);
    state.slaveAddress = number(kSlave, state.slaveAddress);
    state.transmissionMode = number(kMode, state.transmissionMode);
    state.modelString = ini.GetIniData(kSection, kModelString, QString());
    return state;
}

void LastState::save(clsLibrary& library) const
{
    platform::ProfileStore::Batch batch(library.context().machine.profiles);
    library.saveINIParam(kSection, kModelNo, modelNo);
    library.saveINIParam(kSection, kSlave, slaveAddress);
    library.saveINIParam(kSection, kMode, transmissionMode);
    library.saveINIParam(kSection, kModelString, modelString);
}
