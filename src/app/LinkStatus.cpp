#include "LinkStatus.h"

QString linkStatusText(const LinkStatus& link, const TranslateText& tran)
{
    if (link.offLine)
        return tran(QStringLiteral("offline: nothing is sent"));
    if (link.simulator)
        return tran(QStringLiteral("simulator, no real controller: %1")).arg(link.device);
    if (link.lost)
        return tran(QStringLiteral("COM%1 %2 lost, waiting for it to come back")).arg(link.port).arg(link.device);
    if (link.deferred)
        return tran(QStringLiteral("COM%1 %2 is connected to with the next request")).arg(link.port).arg(link.device);
    if (!link.open)
        return tran(QStringLiteral("COM%1 is closed: %2"))
            .arg(link.port)
            .arg(link.error.isEmpty() ? tran(QStringLiteral("connect the adapter and read again"))
                                      : link.error.simplified());
    const QString text = tran(QStringLiteral("COM%1 %2 %3,%4 %5 slave %6"))
                             .arg(link.port)
                             .arg(link.device, link.speed, link.chara, link.transmissionMode == 1 ? u"ASCII" : u"RTU")
                             .arg(link.slaveAddress);
    QStringList parts{text};
    if (link.back)
        parts.prepend(tran(QStringLiteral("connected again")));
    if (link.readOnly)
        parts << tran(QStringLiteral("read-only"));
    return parts.join(QStringLiteral(", "));
}
