#pragma once

#include "Result.h"

#include <QString>

namespace platform {

// A serial server as it is named in place of a device: "tcp://host:port" carries the bytes of the line as they are,
// "rfc2217://host:port" also sets speed and format at the far end. host is a name, an IPv4 address, or an IPv6 address
// in brackets: "tcp://[::1]:4001".
struct ServerAddress
{
    bool setsLine = false; // rfc2217
    QString host;          // without brackets
    quint16 port = 0;      // 1 to 65535

    // Whether a name is meant as a server's, well-formed or not; all others are devices of this machine.
    static bool isMeant(const QString& name);
    // A failure is an English phrase that can be translated.
    static Result<ServerAddress> parse(const QString& name);
    // The same for any name: a device of this machine is not looked at.
    static Result<> check(const QString& name);
};

} // namespace platform
