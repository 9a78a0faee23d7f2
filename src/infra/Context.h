#pragma once

#include "Machine.h"

#include <QString>

class clsCfg;
class clsLog;
class MessagePresenter;

// The process-wide values, owned by the entry procedure of each program and handed down by reference. The
// pointers may be null until start-up has made the objects (or in a program that does without them).
struct Context
{
    platform::Machine& machine;
    clsLog* errorLog = nullptr;
    clsLog* eventLog = nullptr;
    clsCfg* settings = nullptr;
    QString languageFile;                 // bare name of the language file in use
    bool translates = true;               // false: a program whose texts stay English (for scripts)
    MessagePresenter* messages = nullptr; // null: nobody is there to be asked
};
