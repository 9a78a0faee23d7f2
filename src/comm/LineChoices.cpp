#include "LineChoices.h"

#include <algorithm>

namespace linechoices {

const QList<Format>& formats()
{
    static const QList<Format> kFormats = {
        {QStringLiteral("N,8,1"), QStringLiteral("Option7"), QStringLiteral("&8 bits, no parity")},
        {QStringLiteral("E,7,1"), QStringLiteral("Option6"), QStringLiteral("&7 bits, even parity")},
        {QStringLiteral("E,8,1"), QStringLiteral("Option8"), QStringLiteral("8 bits, e&ven parity")},
        {QStringLiteral("O,8,1"), QStringLiteral("Option9"), QStringLiteral("8 bits, odd parit&y")},
        {QStringLiteral("N,8,2"), QStringLiteral("Option10"), QStringLiteral("8 bits, no parity, &2 stop bits")}};
    return kFormats;
}

const QStringList& speeds()
{
    static const QStringList kSpeeds = {QStringLiteral("9600"),  QStringLiteral("19200"), QStringLiteral("2400"),
                                        QStringLiteral("4800"),  QStringLiteral("38400"), QStringLiteral("57600"),
                                        QStringLiteral("115200")};
    return kSpeeds;
}

bool isOffered(const QString& chara)
{
    return std::any_of(formats().cbegin(), formats().cend(),
                       [&](const Format& format) { return format.chara == chara; });
}

} // namespace linechoices
