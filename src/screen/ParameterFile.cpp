#include "ParameterFile.h"

#include "FolderName.h"
#include "IniBatch.h"
#include "ItemDisplay.h"
#include "ModelCodes.h"
#include "ModelData.h"
#include "Numbers.h"
#include "ProgramVersion.h"
#include "clsINI.h"
#include "clsLibrary.h"

namespace {

const QString kInfo = QStringLiteral("Info");
const QString kData = QStringLiteral("Data");
const QString kModel = QStringLiteral("MODEL");
const QString kSaveDate = QStringLiteral("SaveDate");
const QString kComment = QStringLiteral("Comment");

// Whether a text can be the stored value of the item. A text item takes any; an empty one means "no value"; what the
// definition itself gives was saved as it is.
bool isValueOf(const ItemData& item, const QString& text)
{
    return item.showsStoredText() || text.isEmpty() || text == item.DefData() ||
           platform::parseSingle(text).has_value();
}

} // namespace

ParameterFile::ParameterFile(clsLibrary& library, const QString& fileName) : m_library(library), m_fileName(fileName) {}

platform::Result<> ParameterFile::save(const ParameterSet& set, const QString& comment) const
{
    platform::Machine& machine = m_library.context().machine;
    const QString file = machine.paths.toMachineForSaving(m_fileName);
    const bool isOffLine = m_library.context().settings.get().m_bComm;
    IniBatch batch(m_library.context());
    platform::Result<> refusal;
    const auto put = [&](const QString& section, const QString& key, const QString& value) {
        const platform::Result<> outcome = machine.profiles.write(file, section, key, value);
        IniBatch::note(m_library.context(), kPutFailure, outcome);
        if (refusal.ok())
            refusal = outcome;
    };
    put(kInfo, kModel, set.modelString);
    put(kInfo, QStringLiteral("OffLine"), isOffLine ? QStringLiteral("True") : QStringLiteral("False"));
    put(kInfo, kSaveDate, machine.clock.now().toString(ParameterFileInfo::kDateForm));
    put(kInfo, QStringLiteral("SoftwareVersion"), ProgramVersion::current().plain());
    put(kInfo, QStringLiteral("LangugeFile"), m_library.context().languageFile);
    if (!comment.isEmpty())
        put(kInfo, kComment, comment);
    for (const auto& [tag, value] : set.values)
        put(kData, tag, value);
    // Without its commit the batch leaves the file as it was.
    return refusal.ok() ? batch.commit() : refusal;
}

QString ParameterFile::readError() const
{
    platform::Machine& machine = m_library.context().machine;
    const platform::PathMap& paths = machine.paths;
    if (!paths.fileExists(m_fileName))
        return m_library.tranStr(QStringLiteral("%1 does not exist or is not a file: choose another one."))
            .arg(paths.toMachine(m_fileName));
    if (!isBareFileName(m_library.GetFileTitle(m_fileName)))
        return m_library.tranStr(kRefusedFileName).arg(paths.toMachine(m_fileName));
    if (paths.fileSize(m_fileName) > platform::ProfileStore::kMaxFileBytes)
        return m_library.tranStr(QStringLiteral("%1 is too large for a parameter file."))
            .arg(paths.toMachine(m_fileName));
    if (!paths.isReadable(m_fileName))
        return m_library.tranStr(QStringLiteral("Permission to read %1 is denied.")).arg(paths.toMachine(m_fileName));
    const platform::Result<> outcome = machine.profiles.readable(paths.toMachine(m_fileName));
    return outcome.ok() ? QString()
                        : m_library.tranStr(QStringLiteral("The file was not loaded: %1")).arg(outcome.error());
}

QString ParameterFile::infoOf(const QString& key) const
{
    clsINI ini(m_library.context());
    ini.setIniPath(m_library.GetDirName(m_fileName));
    ini.setIniFileOrNone(m_library.GetFileTitle(m_fileName));
    return ini.GetIniData(kInfo, key, QString(), true);
}

QString ParameterFile::modelString() const
{
    return infoOf(kModel);
}

platform::Result<ParameterFileInfo> ParameterFile::info() const
{
    const QString error = readError();
    if (!error.isEmpty())
        return platform::Failure{error};
    const QDateTime savedAt = QDateTime::fromString(infoOf(kSaveDate), ParameterFileInfo::kDateForm);
    return ParameterFileInfo{modelString(), savedAt, infoOf(kComment)};
}

ParameterLoad ParameterFile::read(const ModelData& model, ParameterSet& set) const
{
    ParameterLoad load;
    load.detail = readError();
    if (!load.detail.isEmpty()) {
        load.outcome = ParameterLoad::Outcome::Unreadable;
        return load;
    }
    clsINI ini(m_library.context());
    ini.setIniPath(m_library.GetDirName(m_fileName));
    ini.setIniFileOrNone(m_library.GetFileTitle(m_fileName));
    set.modelString = modelString();
    if (set.modelString != model.lookup.modelString) {
        load.outcome = ParameterLoad::Outcome::OtherModel;
        load.detail = modelcodes::differenceText(model.lookup.modelString, set.modelString, m_library.translation());
        return load;
    }
    for (const auto& item : model.items) {
        const QString value = ini.GetIniData(kData, item->Key(), QString(), true);
        if (!isValueOf(*item, value)) {
            load.outcome = ParameterLoad::Outcome::BadValue;
            load.detail =
                m_library.tranStr(QStringLiteral("In %1, \"%3\" is not a valid value for %2: nothing was loaded."))
                    .arg(m_library.context().machine.paths.toMachine(m_fileName),
                         nameWithTag(*item, m_library.translation()), value);
            return load;
        }
        if (value.isEmpty())
            load.missing << item->Key();
        set.values.append({item->Key(), value});
    }
    return load;
}
