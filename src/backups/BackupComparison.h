#pragma once

#include "ParameterSet.h"

#include <QHash>

#include <optional>

// A loaded model as the grid shows it at the moment of construction, to compare backups with. Only the parameters that
// are written to the controller count: what is measured differs from one moment to the next.
class BackupComparison
{
public:
    explicit BackupComparison(const ModelData& model);

    // How many parameters of the set have another value than the grid; nothing for a set of another model.
    std::optional<int> differencesTo(const ParameterSet& set) const;

    // What of a set would be sent to the controller: the values of the parameters that are written.
    ParameterSet writtenPart(const ParameterSet& set) const;

private:
    QString m_modelString;
    QHash<QString, QString> m_shown; // stored values by tag; empty for a parameter without one
};
