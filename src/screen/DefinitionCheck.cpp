#include "DefinitionCheck.h"

#include "DefinitionFault.h"
#include "Log.h"
#include "clsLibrary.h"

#include <QFileInfo>

namespace {

bool isUsable(const QString& name, const QString& key, const ModelEntry& entry, DefinitionFindings& findings)
{
    const QString file = findings.definitionPath(name);
    if (name.isEmpty()) {
        const QString settings = findings.kx().library().getIniFileName(QStringLiteral("Main"));
        findings.add({settings, QStringLiteral("KXInfos"), key + QString::number(entry.number),
                      QStringLiteral("names no file"), QStringLiteral("name the file of model %1").arg(entry.code)});
    } else if (!QFileInfo::exists(file)) {
        findings.add({name, {}, {}, QStringLiteral("is missing"), QStringLiteral("put it into the definition folder")});
    } else {
        const QString error = findings.machine().profiles.readable(file).error();
        if (error.isEmpty())
            return true;
        findings.add({name, {}, {}, error, QStringLiteral("make it a plain file that you may read")});
    }
    return false;
}

bool areUsable(const ModelEntry& entry, DefinitionFindings& findings)
{
    const bool hasScreen = isUsable(entry.screenFile, QStringLiteral("KXScreenFile"), entry, findings);
    const bool hasComm = isUsable(entry.commFile, QStringLiteral("KXCommFile"), entry, findings);
    const QString fault = definitionFault(findings.kx().library(), entry);
    if (!fault.isEmpty())
        findings.add({entry.screenFile, {}, {}, fault, QStringLiteral("correct the model catalogue")});
    return hasScreen && hasComm && fault.isEmpty();
}

void load(const ModelEntry& entry, const QString& modelString, DefinitionFindings& findings)
{
    clsKX& kx = findings.kx();
    kx.Logs(noLog(), noLog());
    kx.load(entry.number, &kx.library(), modelString);
    for (const DefinitionFinding& finding : kx.definitionFindings())
        findings.add(finding);
    if (kx.items().empty())
        findings.add({entry.screenFile,
                      {},
                      {},
                      QStringLiteral("describes no parameters"),
                      QStringLiteral("give DataMaxCount and a section for each parameter")});
}

} // namespace

DefinitionCheck::DefinitionCheck(clsLibrary& library) : m_library(library), m_kx(library)
{
    m_kx.setSpread(&m_grid);
}

std::vector<DefinitionFinding> DefinitionCheck::run(const ModelEntry& entry, const QString& modelString)
{
    const platform::ProfileStore::Batch dropped(m_library.context().machine.profiles); // nothing is written
    DefinitionFindings findings(m_kx, entry.screenFile, entry.commFile);
    if (!areUsable(entry, findings))
        return findings.all();
    load(entry, modelString, findings);
    definitionRules::checkImages(findings);
    definitionRules::checkReferences(findings);
    definitionRules::checkTexts(findings);
    definitionRules::checkDefaults(findings);
    definitionRules::checkLimits(findings);
    return findings.all();
}
