#include "BackupReader.h"

#include "ModelData.h"
#include "ParameterFile.h"
#include "clsLibrary.h"

namespace {

platform::Result<ParameterSet> readSet(clsLibrary& library, const ModelData& model, const QString& file)
{
    ParameterSet set;
    const ParameterLoad load = ParameterFile(library, file).read(model, set);
    if (load.outcome != ParameterLoad::Outcome::Loaded)
        return platform::Failure{load.detail};
    return set;
}

} // namespace

platform::Result<ParameterSet> BackupReader::read(const ModelData& model, const QString& file)
{
    const platform::PathMap& paths = m_library.context().machine.paths;
    const QDateTime changed = paths.lastChanged(file);
    const qint64 size = paths.fileSize(file);
    const Held* held = m_held.object(file);
    if (held != nullptr && held->modelString == model.lookup.modelString && held->changed == changed &&
        held->size == size)
        return held->set;
    platform::Result<ParameterSet> set = readSet(m_library, model, file);
    m_held.insert(file, new Held{model.lookup.modelString, changed, size, set});
    return set;
}
