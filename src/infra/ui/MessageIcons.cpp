#include "MessageIcons.h"

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>

namespace {

struct Look
{
    QString name;
    QString themeName;
    QColor ground;
    QColor mark;
    QString sign; // empty: a cross
};

Look lookOf(MessageIcon icon)
{
    const QColor blue(0x1f, 0x6f, 0xc2);
    switch (icon) {
    case MessageIcon::Stop:
        return {QStringLiteral("Error"), QStringLiteral("dialog-error"), QColor(0xc6, 0x28, 0x28), Qt::white, {}};
    case MessageIcon::Question:
        return {QStringLiteral("Question"), QStringLiteral("dialog-question"), blue, Qt::white, QStringLiteral("?")};
    case MessageIcon::Exclamation:
        return {QStringLiteral("Warning"), QStringLiteral("dialog-warning"), QColor(0xf9, 0xc0, 0x2d), Qt::black,
                QStringLiteral("!")};
    case MessageIcon::Information:
        return {QStringLiteral("Information"), QStringLiteral("dialog-information"), blue, Qt::white,
                QStringLiteral("i")};
    case MessageIcon::None:
        break;
    }
    return {};
}

QPainterPath outline(MessageIcon icon, qreal side)
{
    QPainterPath path;
    if (icon == MessageIcon::Exclamation)
        path.addPolygon(QPolygonF({{side / 2, side * 0.08}, {side * 0.96, side * 0.9}, {side * 0.04, side * 0.9}}));
    else
        path.addEllipse(QRectF(side * 0.04, side * 0.04, side * 0.92, side * 0.92));
    path.closeSubpath();
    return path;
}

void drawCross(QPainter& painter, const QColor& color, qreal side)
{
    painter.setPen(QPen(color, side * 0.12, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(side * 0.33, side * 0.33), QPointF(side * 0.67, side * 0.67));
    painter.drawLine(QPointF(side * 0.67, side * 0.33), QPointF(side * 0.33, side * 0.67));
}

void drawSign(QPainter& painter, const Look& look, MessageIcon icon, int side)
{
    QFont font = painter.font();
    font.setPixelSize(icon == MessageIcon::Exclamation ? side * 9 / 16 : side * 11 / 16);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(look.mark);
    const int down = icon == MessageIcon::Exclamation ? side / 10 : 0; // the triangle's middle lies lower
    painter.drawText(QRect(0, down, side, side), Qt::AlignCenter, look.sign);
}

QPixmap drawn(const Look& look, MessageIcon icon, int side, qreal ratio)
{
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look.ground, side * 0.06, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(look.ground);
    painter.drawPath(outline(icon, side));
    if (look.sign.isEmpty())
        drawCross(painter, look.mark, side);
    else
        drawSign(painter, look, icon, side);
    return pixmap;
}

} // namespace

QPixmap messagePixmap(MessageIcon icon, int side, qreal devicePixelRatio)
{
    if (icon == MessageIcon::None)
        return {};
    const Look look = lookOf(icon);
    const QIcon themed = QIcon::fromTheme(look.themeName);
    if (!themed.isNull())
        return themed.pixmap(QSize(side, side), devicePixelRatio);
    return drawn(look, icon, side, devicePixelRatio);
}

QString messageIconName(MessageIcon icon)
{
    return lookOf(icon).name;
}
