#pragma once

#include "Log.h"
#include "Machine.h"
#include "ProgramOptions.h"
#include "UnansweredMessages.h"

#include <QString>

#include <functional>

// The process-wide values, owned by the entry procedure of each program and handed down by reference. Logs, settings
// and messages are always there: until start-up has set them they keep nothing, are all off, and answer by default.
struct Context
{
    explicit Context(platform::Machine& itsMachine) : machine(itsMachine) {}
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    platform::Machine& machine;
    std::reference_wrapper<Log> errorLog = noLog();
    std::reference_wrapper<Log> eventLog = noLog();
    std::reference_wrapper<const ProgramOptions> settings = noOptions();
    QString languageFile;   // bare name of the language file in use
    bool translates = true; // false: a program whose texts stay English (for scripts)
    UnansweredMessages nobody{errorLog};
    std::reference_wrapper<MessagePresenter> messages = nobody; // who asks the person at the program
};
