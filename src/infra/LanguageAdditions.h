#pragma once

#include <QByteArray>
#include <optional>

namespace platform {
class CodePage;
}

// Language files grow while they are in use: a text that a file lacks is added to it with the English as its value, so
// a copy that differs from the file that was shipped is not therefore one that somebody has edited.
//
// Gives the next version of the file with what the copy holds besides the lines of the shipped one; an added text that
// was never translated gives way to the next version's. Nothing when the copy was edited: a line of the shipped file is
// missing or changed, a comment was added, or an added value differs from the next version's.
std::optional<QByteArray> withAdditions(const QByteArray& shipped, const QByteArray& copy, const QByteArray& next,
                                        const platform::CodePage& codePage);
