#pragma once

#include "Context.h"

#include <QString>
#include <QStringList>
#include <QVariant>

// The one gateway to INI-syntax files. Set IniPath and IniFileName (or keep the defaults: the program folder and the
// executable's base name + ".ini"), then read and write; no file is kept open between calls. A read with bReadOnly
// false writes a missing key back with its default. No failure reaches the caller; each is one line in the error log.
class clsINI
{
public:
    explicit clsINI(Context& context);

    void setIniPath(const QString& NewValue);     // folder; refused when it names a plain file
    void setIniFileName(const QString& NewValue); // bare name; refused with any of \ / : * ? " < > |
    // For a name from outside: one that is refused must not lead to another file. Without a file a read gives its
    // default and nothing is written. False when there is none.
    bool setIniFileOrNone(const QString& name);
    int BufferSize() const { return m_bufferSize; } // bytes of a single read, terminator included
    void setBufferSize(int size);                   // taken when greater than 0

    // The stored value, or strDefault when the key is missing or empty; cut to BufferSize - 1 bytes.
    QString GetIniData(const QString& strSection, const QString& strKey, const QString& strDefault,
                       bool bReadOnly = false);
    // Null and invalid values are not written. Booleans as "True"/"False", numbers as decimal text.
    void PutIniData(const QString& strSection, const QString& strKey, const QVariant& vntItem);

    // Folders of the machine with a backslash at their end, for users of the class outside this program; empty when
    // there is none.
    QString GetWindowsPath() const;
    QString GetSystemPath() const;
    QString GetWinTempPath() const;

    // Number of lines of the section put into strSectionString; -1 (and the list untouched) when missing or empty.
    int EnumSectionString(const QString& strSection, QStringList& strSectionString);
    // Empties the values of all keys of a section; returns how many were emptied.
    int clearSection(const QString& strSection);

    bool hasSection(const QString& section);
    // How many sections are called by this prefix and a number.
    int numberedSections(const QString& prefix);

private:
    QString m_iniPath;
    QString m_iniFileName;
    int m_bufferSize = 512;
    bool m_isNone = false; // no file at all
    Context& m_context;

    QString m_machineFile; // of path and name, empty until asked for

    const QString& machineFile();
    bool isReadable(int number); // a file that is not is noted under the number
};
