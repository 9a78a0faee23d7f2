#pragma once

#include "ParameterFile.h"

#include <QString>
#include <vector>

class clsLibrary;

// Parameter sets that a write of all data is about to replace, kept as parameter files in the folder "Backup" beside
// the settings, so that a wrong write can be undone. Their names hold a running number: the newest ones of each model
// stay whatever the clock says.
class BackupStore
{
public:
    static constexpr int kKeptPerModel = 20;

    explicit BackupStore(clsLibrary& library) : m_library(library) {}

    // extension: of parameter files of the model, without a point; "par" stands for one that is no plain extension.
    platform::Result<> keep(const ParameterSet& set, const QString& extension) const;

    QString folder() const; // desktop path

private:
    static constexpr int kDigits = 6; // of a running number, at least
    struct Backup
    {
        qint64 number;
        QString file;
    };
    std::vector<Backup> backupsOf(const QString& modelString) const;
    void removeOld(const QString& modelString) const;

    clsLibrary& m_library;
};
