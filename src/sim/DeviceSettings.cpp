#include "DeviceSettings.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<int, speed_t>, 13> kSpeeds{{{300, B300},
                                                           {600, B600},
                                                           {1200, B1200},
                                                           {2400, B2400},
                                                           {4800, B4800},
                                                           {9600, B9600},
                                                           {19200, B19200},
                                                           {38400, B38400},
                                                           {57600, B57600},
                                                           {115200, B115200},
                                                           {230400, B230400},
                                                           {460800, B460800},
                                                           {921600, B921600}}};

// The control flags of a format; false when the format is not known.
bool flagsOf(const QString& chara, tcflag_t& flags)
{
    const QStringList fields = chara.toUpper().split(u',');
    if (fields.size() != 3 || !QStringLiteral("NEO").contains(fields[0]) || fields[0].size() != 1)
        return false;
    if ((fields[1] != u"7" && fields[1] != u"8") || (fields[2] != u"1" && fields[2] != u"2"))
        return false;
    flags = fields[1] == u"7" ? CS7 : CS8;
    if (fields[0] != u"N")
        flags |= PARENB;
    if (fields[0] == u"O")
        flags |= PARODD;
    if (fields[2] == u"2")
        flags |= CSTOPB;
    return true;
}

} // namespace

bool setLine(termios& line, int speed, const QString& chara, QString& errorText)
{
    const auto known =
        std::find_if(kSpeeds.begin(), kSpeeds.end(), [speed](const auto& entry) { return entry.first == speed; });
    if (known == kSpeeds.end()) {
        errorText = QStringLiteral("the speed %1 is not one of the usual ones, such as 9600 or 19200").arg(speed);
        return false;
    }
    tcflag_t flags = 0;
    if (!flagsOf(chara, flags)) {
        errorText = QStringLiteral("the format \"%1\" is not of the form N,8,1").arg(chara);
        return false;
    }
    line.c_cflag = (line.c_cflag & ~static_cast<tcflag_t>(CSIZE | PARENB | PARODD | CSTOPB)) | flags;
    cfsetspeed(&line, known->second);
    return true;
}
