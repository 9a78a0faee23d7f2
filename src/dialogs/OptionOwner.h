#pragma once

// What the options need of the window that opened them.
class OptionOwner
{
public:
    virtual ~OptionOwner() = default;
    // Shows the window in the language and font of the settings.
    virtual void tranForm() = 0;
    // Asks for the communication settings when the event at hand has ended, if the program works on-line.
    virtual void doCommCheck() = 0;
};
