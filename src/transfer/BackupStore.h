#pragma once

#include "ParameterFile.h"

#include <QString>
#include <vector>

class clsLibrary;

// What the controller held before each write, kept as parameter files in the folder "Backup" beside the settings, so
// that a wrong write can be undone. Their names hold a running number: the newest ones of each model stay whatever the
// clock says.
class BackupStore
{
public:
    static constexpr int kKeptPerModel = 100;

    explicit BackupStore(clsLibrary& library) : m_library(library) {}

    // extension: of parameter files of the model, without a point; "par" stands for one that is no plain extension.
    // comment: why and where, for a person. A set that the model's newest backup holds already is not kept again.
    platform::Result<> keep(const ParameterSet& set, const QString& extension, const QString& comment) const;

    QString folder() const; // desktop path

private:
    static constexpr int kDigits = 6; // of a running number, at least
    struct Backup
    {
        qint64 number;
        QString file;
    };
    std::vector<Backup> backupsOf(const QString& modelString) const;
    bool holds(const Backup& backup, const ParameterSet& set) const;
    void removeOld(const QString& modelString) const;

    clsLibrary& m_library;
};
