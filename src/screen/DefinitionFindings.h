#pragma once

#include "DefinitionFinding.h"

#include <QString>
#include <QStringList>

#include <vector>

class clsData;
class clsKX;

namespace platform {
struct Machine;
}

// What a check has found so far, each thing once, and the names that findings have in common. The rules below add to
// it; the model is kept by reference and must be loaded before they are called.
class DefinitionFindings
{
public:
    DefinitionFindings(clsKX& kx, QString screenFile, QString commFile);

    clsKX& kx() const { return m_kx; }
    const QString& screenFile() const { return m_screenFile; }
    QString definitionPath(const QString& file) const; // machine path in the definition folder
    static QString tablesFile() { return QStringLiteral("MultiSelect.ini"); }
    QStringList tables() const; // selection tables that items choose from, each once
    QStringList tableLines(const QString& table) const;
    platform::Machine& machine() const;

    void add(const DefinitionFinding& finding);
    // fault: what is said of the item; its tag is put before it.
    void addToItem(const clsData& item, const QString& key, const QString& fault, const QString& remedy);
    void addToComm(const QString& section, const QString& key, const QString& fault, const QString& remedy);

    bool concern(const clsData& item, const QString& key) const; // something is wrong with this key already
    const std::vector<DefinitionFinding>& all() const { return m_all; }

private:
    clsKX& m_kx;
    QString m_screenFile;
    QString m_commFile;
    std::vector<DefinitionFinding> m_all;
};

namespace definitionRules {

// The items of an image lie within it, fill it and share no bits; a read is no longer than a reply.
void checkImages(DefinitionFindings& findings);
// Tags and sections that the screen file, the comm file and the selection tables name do exist.
void checkReferences(DefinitionFindings& findings);
// Every default is within its limits, among its choices, and fits the item's bytes. An item without default has none
// to be checked.
void checkDefaults(DefinitionFindings& findings);
// The limits fit the item's bytes, and those of alarms hold the whole scale, with every input range, in both units and
// with every decimal point that may go with it. Leaves the model with the values tried last.
void checkLimits(DefinitionFindings& findings);
// Every installed language has the names, captions, choices and table entries of the model.
void checkTexts(DefinitionFindings& findings);

} // namespace definitionRules
