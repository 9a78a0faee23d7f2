#pragma once

#include <QString>

namespace platform {

// Puts the dialogs that are Qt's own (files, printing, fonts) into the language of a Windows language code, the last
// two hexadecimal digits of a language identifier: "11" is Japanese. They stay English for "09", for a code without
// translations on this machine, and for none.
void translateDesktopDialogs(const QString& languageCode);

} // namespace platform
