#include "DefinitionFindings.h"

#include "clsKX.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>

QString DefinitionFinding::whatAndWhere() const
{
    QString place = file;
    if (!section.isEmpty())
        place += QStringLiteral(" [%1]").arg(section);
    if (!key.isEmpty())
        place += u' ' + key;
    return place + QStringLiteral(": ") + fault;
}

QString DefinitionFinding::text() const
{
    return whatAndWhere() + QStringLiteral("; ") + remedy;
}

DefinitionFindings::DefinitionFindings(clsKX& kx, QString screenFile, QString commFile)
    : m_kx(kx), m_screenFile(std::move(screenFile)), m_commFile(std::move(commFile))
{}

QString DefinitionFindings::definitionPath(const QString& file) const
{
    return machine().paths.toMachine(m_kx.library().getIniFilePath(QString()) + u'\\' + file);
}

QStringList DefinitionFindings::tables() const
{
    QStringList names;
    for (const auto& item : m_kx.items())
        names << item->Section() << item->ICSection() << item->IKSection();
    names.removeDuplicates();
    names.removeAll(QString());
    return names;
}

QStringList DefinitionFindings::tableLines(const QString& table) const
{
    return machine().profiles.readSection(definitionPath(tablesFile()), table);
}

platform::Machine& DefinitionFindings::machine() const
{
    return m_kx.library().context().machine;
}

void DefinitionFindings::add(const DefinitionFinding& finding)
{
    if (std::find(m_all.begin(), m_all.end(), finding) == m_all.end())
        m_all.push_back(finding);
}

bool DefinitionFindings::concern(const clsData& item, const QString& key) const
{
    const QString section = item.definitionSection();
    return std::any_of(m_all.begin(), m_all.end(), [&](const DefinitionFinding& known) {
        return known.file == m_screenFile && known.section == section && known.key == key;
    });
}

void DefinitionFindings::addToItem(const clsData& item, const QString& key, const QString& fault, const QString& remedy)
{
    add({m_screenFile, item.definitionSection(), key, item.Key() + u' ' + fault, remedy});
}

void DefinitionFindings::addToComm(const QString& section, const QString& key, const QString& fault,
                                   const QString& remedy)
{
    add({m_commFile, section, key, fault, remedy});
}
