#include "CheckCommand.h"

#include "DefinitionCheck.h"
#include "LastState.h"
#include "ModelChoice.h"
#include "ModelCodes.h"
#include "OutputFormat.h"
#include "ProgramContext.h"
#include "VisibleText.h"

#include <algorithm>

namespace {

// A code alone is a model without options, whatever controller was used last.
CommandResult chooseModels(ModelCatalogue& catalogue, const QStringList& wanted, std::vector<ModelChoice>& models)
{
    for (const QString& model : wanted) {
        models.emplace_back();
        if (!chooseModel(catalogue, model, LastState(), models.back()).ok())
            return CommandResult::failed(
                ExitStatus::Usage,
                QStringLiteral("check-definitions: \"%1\" is not in the model catalogue; vorlantctl models lists it")
                    .arg(model));
    }
    const std::vector<ModelEntry> all = wanted.isEmpty() ? catalogue.all() : std::vector<ModelEntry>();
    for (const ModelEntry& entry : all)
        models.push_back({entry, modelcodes::handPicked(entry.code)});
    return {};
}

QByteArray formatFindings(const std::vector<DefinitionFinding>& findings, OutputFormat format)
{
    if (format == OutputFormat::Table) {
        QString lines;
        for (const DefinitionFinding& finding : findings)
            lines += platform::visibleText(finding.text()) + u'\n';
        return lines.toUtf8();
    }
    PrintedRows printed{{QStringLiteral("file"), QStringLiteral("section"), QStringLiteral("key"),
                         QStringLiteral("fault"), QStringLiteral("remedy")},
                        {},
                        {}};
    for (const DefinitionFinding& finding : findings)
        printed.rows.append({finding.file, finding.section, finding.key, finding.fault, finding.remedy});
    return formatRows(printed, format);
}

} // namespace

CommandResult checkDefinitions(ProgramContext& program, const CommandLine& line)
{
    ModelCatalogue catalogue(program.library());
    std::vector<ModelChoice> models;
    CommandResult step = openCatalogue(program, catalogue);
    if (step.ok())
        step = chooseModels(catalogue, line.words, models);
    if (!step.ok())
        return step;
    std::vector<DefinitionFinding> findings;
    for (const ModelChoice& model : models) {
        for (const DefinitionFinding& finding :
             DefinitionCheck(program.library()).run(model.entry, model.modelString)) {
            if (std::find(findings.begin(), findings.end(), finding) == findings.end()) // of a file that models share
                findings.push_back(finding);
        }
    }
    return {findings.empty() ? ExitStatus::Done : ExitStatus::BadFile, formatFindings(findings, line.format),
            QString()};
}
