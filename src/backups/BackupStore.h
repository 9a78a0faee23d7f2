#pragma once

#include "ParameterFile.h"

#include <QDateTime>
#include <QString>
#include <vector>

class clsLibrary;

// One backup, as its file says.
struct BackupEntry
{
    QString file;      // desktop path
    QDateTime savedAt; // not valid when the file does not say it
    QString model;     // whole model string
    QString cause;     // why and where, as it was kept

    QString timeText() const { return savedAt.toString(ParameterFileInfo::kDateForm); }
};

struct BackupList
{
    std::vector<BackupEntry> entries;
    int unreadable = 0; // files with the name of a backup that cannot be read or are no parameter files
};

// What the controller held before each write, kept as parameter files in the folder of backups, so that a
// wrong write can be undone. Their names hold a running number: the newest ones of each model stay whatever the
// clock says.
class BackupStore
{
public:
    static constexpr int kKeptPerModel = 100;

    explicit BackupStore(clsLibrary& library) : m_library(library) {}

    // extension: of parameter files of the model, without a point; "par" stands for one that is no plain extension.
    // comment: why and where, for a person. A set that the model's newest backup holds already is not kept again.
    platform::Result<> keep(const ParameterSet& set, const QString& extension, const QString& comment) const;

    // The backups of a model, or of all models without one; the newest first: by the running numbers, and by the time
    // among models, which number by themselves.
    BackupList list(const QString& modelString = {}) const;

    QString folder() const; // desktop path

private:
    static constexpr int kDigits = 6; // of a running number, at least
    struct Backup
    {
        QString stem; // stands for the model
        qint64 number = 0;
        QString stamp;
        QString file;
    };
    std::vector<Backup> all() const;
    std::vector<Backup> backupsOf(const QString& modelString) const;
    static std::vector<Backup> newestFirst(const std::vector<Backup>& backups);
    bool holds(const Backup& backup, const ParameterSet& set) const;
    void removeOld(const QString& modelString) const;

    clsLibrary& m_library;
};
