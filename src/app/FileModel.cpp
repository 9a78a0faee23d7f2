#include "FileModel.h"

#include "ModelCatalogue.h"
#include "ModelCodes.h"
#include "ParameterFile.h"
#include "clsLibrary.h"

platform::Result<FileModel> modelOfFile(clsLibrary& library, const QString& file)
{
    const QString path = library.context().machine.paths.toDesktop(file);
    const platform::Result<ParameterFileInfo> info = ParameterFile(library, path).info();
    if (!info.ok())
        return platform::Failure{info.error()};
    const QString modelString = info.value().modelString;
    if (modelString.isEmpty())
        return platform::Failure{library.tranStr(QStringLiteral("%1 is no parameter file.")).arg(file)};
    const int position = modelcodes::select(modelString, ModelCatalogue(library).codes()).position;
    if (position < 0)
        return platform::Failure{
            library.tranStr(QStringLiteral("%1 is of the model %2, which is not in the catalogue."))
                .arg(file, modelString)};
    return FileModel{position + 1, modelString};
}
