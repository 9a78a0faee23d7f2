#include "ServerAddress.h"

#include <QHostAddress>

#include <algorithm>

namespace platform {

namespace {

const QString kTcpScheme = QStringLiteral("tcp:");
const QString kTelnetScheme = QStringLiteral("rfc2217:");
constexpr qsizetype kMostHostCharacters = 253; // RFC 1035

bool isHostCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'-' || c == u'.' || c == u'_';
}

bool isHost(const QString& host, bool isBracketed)
{
    if (isBracketed)
        return QHostAddress(host).protocol() == QAbstractSocket::IPv6Protocol;
    return host.size() <= kMostHostCharacters && std::all_of(host.cbegin(), host.cend(), isHostCharacter);
}

// 0 for anything but 1 to 65535.
quint16 portOf(const QString& text)
{
    const bool isNumber = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return isNumber ? text.toUShort() : quint16(0);
}

} // namespace

bool ServerAddress::isMeant(const QString& name)
{
    return name.startsWith(kTcpScheme, Qt::CaseInsensitive) || name.startsWith(kTelnetScheme, Qt::CaseInsensitive);
}

Result<> ServerAddress::check(const QString& name)
{
    const Result<ServerAddress> address = parse(name);
    return isMeant(name) && !address.ok() ? Result<>(Failure{address.error()}) : Result<>();
}

Result<ServerAddress> ServerAddress::parse(const QString& name)
{
    const Failure otherForm{QStringLiteral("the form is tcp://host:port or rfc2217://host:port")};
    const QString rest = name.section(u':', 1);
    if (!isMeant(name) || !rest.startsWith(QStringLiteral("//")))
        return otherForm;
    const QString place = rest.mid(2);
    if (place.contains(u'@'))
        return Failure{QStringLiteral("a serial server accepts no user name; the form is tcp://host:port")};
    const bool isBracketed = place.startsWith(u'[');
    const qsizetype end = isBracketed ? place.indexOf(u']') : place.indexOf(u':');
    const QString host = isBracketed ? place.mid(1, std::max<qsizetype>(end - 1, 0)) : place.left(end);
    if (host.isEmpty())
        return Failure{QStringLiteral("the host is missing; the form is tcp://host:port")};
    if ((isBracketed && end < 0) || !isHost(host, isBracketed))
        return otherForm;
    const QString port = end < 0 ? QString() : place.mid(isBracketed ? end + 1 : end);
    if (port.size() < 2)
        return port.isEmpty() || port == u":"
                   ? Failure{QStringLiteral("the port number is missing; the form is tcp://host:port")}
                   : otherForm;
    if (!port.startsWith(u':'))
        return otherForm;
    if (portOf(port.mid(1)) == 0)
        return Failure{QStringLiteral("the port number must be 1 to 65535")};
    return ServerAddress{name.startsWith(kTelnetScheme, Qt::CaseInsensitive), host, portOf(port.mid(1))};
}

} // namespace platform
