#pragma once

#include "ParameterFile.h"

#include <QString>

class clsLibrary;

// Parameter sets that a write of all data is about to replace, kept as parameter files in the folder "Backup" beside
// the settings, so that a wrong write can be undone. The newest ones of each model stay.
class BackupStore
{
public:
    static constexpr int kKeptPerModel = 20;

    explicit BackupStore(clsLibrary& library) : m_library(library) {}

    // extension: of parameter files of the model, without a point. Empty, or why the set could not be kept.
    QString keep(const ParameterSet& set, const QString& extension) const;

    QString folder() const; // desktop path

private:
    void removeOld(const QString& modelString) const;

    clsLibrary& m_library;
};
