#pragma once

#include "Context.h"

#include <QString>

// The installed language files: every file of the folder "Lang" whose section "Info" has a "Name".
class LanguageList
{
public:
    explicit LanguageList(Context& context) : m_context(context) {}

    // Writes the list into section "Language" of the main settings file and finds the default: the (last) file whose
    // "LocaleID" is the user's language code, else "EN.txt".
    void rebuild(const QString& userLanguageCode);

    // Bare file name; empty before the first rebuild.
    QString defaultFile() const { return m_defaultFile; }

private:
    Context& m_context;
    QString m_defaultFile;
};
