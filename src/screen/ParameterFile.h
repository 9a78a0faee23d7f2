#pragma once

#include "ParameterSet.h"
#include "Result.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

class clsLibrary;
struct ModelData;

// What became of the loading of a parameter file. Anything but Loaded has changed nothing.
struct ParameterLoad
{
    enum class Outcome {
        Loaded,
        OtherModel, // the file belongs to another model, or names none
        Unreadable, // it is no file that can be read
        BadValue    // a value that its parameter can never have
    };
    Outcome outcome = Outcome::Loaded;
    QString detail;            // for a person, in the user's language; empty when loaded
    QStringList changed;       // tags whose value differs from before
    QStringList missing;       // tags that the file lacks: they have no value now
    QStringList outsideLimits; // tags whose value is taken, although it is outside its limits
};

// What a parameter file says of itself.
struct ParameterFileInfo
{
    static inline const QString kDateForm = QStringLiteral("yyyy/MM/dd HH:mm:ss");

    QString modelString; // empty: the file is no parameter file
    QDateTime savedAt;   // not valid when the file does not say it
    QString comment;     // a line for a person; empty for none
};

// A parameter data file, in INI syntax: section "Info" tells what it belongs to, section "Data" holds the stored value
// of each tag. Saving replaces the file as a whole or leaves it as it was; keys that are not this program's survive.
class ParameterFile
{
public:
    // fileName: desktop path.
    ParameterFile(clsLibrary& library, const QString& fileName);

    // comment: a line for a person, key "Comment" of "Info"; empty for none. The failure names the machine path.
    platform::Result<> save(const ParameterSet& set, const QString& comment = {}) const;

    // The values of the file for the items of a model; the outcome says whether they may be used.
    ParameterLoad read(const ModelData& model, ParameterSet& set) const;
    // The same without a model: what the file says of itself. Fails when it cannot be read.
    platform::Result<ParameterFileInfo> info() const;
    QString modelString() const;

private:
    QString infoOf(const QString& key) const;
    QString readError() const; // why the file cannot be read; empty when it can

    clsLibrary& m_library;
    QString m_fileName;
};
