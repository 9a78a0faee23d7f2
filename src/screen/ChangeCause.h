#pragma once

#include <QString>

// Where a value that was changed comes from.
struct ChangeCause
{
    enum class Kind {
        None,
        Typed,
        Chosen, // from a list or a table, or a button
        Pasted,
        Loaded,  // from a file
        Followed // an interlock or a table set it when another parameter was entered
    };
    Kind kind = Kind::None;
    QString tag; // Followed: of that other parameter
    bool operator==(const ChangeCause&) const = default;
};

// What became of the last write of a value, as long as it is not known to be in the controller.
enum class SendMark { None, Failed, NotAccepted };
