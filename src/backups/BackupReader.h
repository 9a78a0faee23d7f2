#pragma once

#include "ParameterSet.h"
#include "Result.h"

#include <QCache>
#include <QDateTime>

class clsLibrary;

// Reads the sets of backups, each file once as long as it stays the same. The sets read last are kept.
class BackupReader
{
public:
    static constexpr int kMostSets = 200;

    explicit BackupReader(clsLibrary& library) : m_library(library) {}

    // file: desktop path. The failure, also that of a file of another model, is for a person, in the user's language.
    platform::Result<ParameterSet> read(const ModelData& model, const QString& file);

private:
    struct Held
    {
        QString modelString;
        QDateTime changed;
        qint64 size;
        platform::Result<ParameterSet> set;
    };
    clsLibrary& m_library;
    QCache<QString, Held> m_held{kMostSets};
};
