#include "DefinitionCheck.h"

#include "DefinitionFault.h"
#include "Log.h"
#include "clsLibrary.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <utility>

namespace {

// Keeps what a load notes instead of writing it to a file.
class NotedLines final : public Log
{
public:
    void LogWrite(const QString& Message) override { m_lines << Message; }
    const QStringList& lines() const { return m_lines; }

private:
    QStringList m_lines;
};

QString remedyOf(const QString& fault)
{
    static const std::pair<QString, QString> kRemedies[] = {
        {QStringLiteral("whole number"), QStringLiteral("write a decimal number, or a hexadecimal one with &h")},
        {QStringLiteral("fields"), QStringLiteral("give all fields, separated by commas")},
        {QStringLiteral("colour"), QStringLiteral("give a name, RGB.red.green.blue or a number")},
        {QStringLiteral("outside the grid"), QStringLiteral("move the cell, or raise MaxRow or MaxCol")},
        {QStringLiteral("is taken"), QStringLiteral("give each parameter a cell of its own")},
        {QStringLiteral("exists already"), QStringLiteral("give each parameter a tag of its own")},
        {QStringLiteral("choices for"), QStringLiteral("give as many texts as values")},
        {QStringLiteral("refer back"), QStringLiteral("give a number of decimal places")},
        {QStringLiteral("is not a count"), QStringLiteral("set it to the number of sections")},
        {QStringLiteral("MultiSelect.ini is missing"), QStringLiteral("put it into the definition folder")},
        {QStringLiteral("ReadCmdMax"), QStringLiteral("set it to the number of read commands")},
        {QStringLiteral("that were not read"), QStringLiteral("write the bytes that the section reads, or fewer")},
        {QStringLiteral("more faults"), QStringLiteral("correct those that are listed first")},
    };
    for (const auto& [piece, remedy] : kRemedies) {
        if (fault.contains(piece))
            return remedy;
    }
    return QStringLiteral("see the manual, Definition files");
}

// "[KXClassError]FILE [SECTION] KEY: FAULT", where the places may be missing.
DefinitionFinding notedFinding(const QString& line, const QString& screenFile)
{
    static const QRegularExpression form(
        QStringLiteral("\\A\\[\\w+\\](?:(.+?) \\[([^\\]]+)\\]:? |screen file: )?(?:(\\w+)(?:: |(?==)))?(.+)\\z"));
    const QRegularExpressionMatch match = form.match(line);
    const QString file = match.captured(1);
    const QString fault = match.captured(4);
    return {file.isEmpty() ? screenFile : file, match.captured(2), match.captured(3), fault, remedyOf(fault)};
}

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

void loadNoted(const ModelEntry& entry, const QString& modelString, DefinitionFindings& findings)
{
    clsKX& kx = findings.kx();
    NotedLines log;
    kx.Logs(log, noLog());
    kx.load(entry.number, &kx.library(), modelString);
    kx.Logs(noLog(), noLog());
    for (const QString& line : log.lines())
        findings.add(notedFinding(line, entry.screenFile));
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
    loadNoted(entry, modelString, findings);
    definitionRules::checkImages(findings);
    definitionRules::checkReferences(findings);
    definitionRules::checkTexts(findings);
    definitionRules::checkDefaults(findings);
    definitionRules::checkLimits(findings);
    return findings.all();
}
