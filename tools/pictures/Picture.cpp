#include "Picture.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace {

constexpr int kTitleHeight = 26;
constexpr int kCrossSide = 8;
const QColor kTitleGround(0xd6, 0xdd, 0xe6);
const QColor kLine(0x8a, 0x93, 0x9e);

// The mark of changes stands in the title as on the desktop.
QString shownTitle(const QWidget& window)
{
    return window.windowTitle().replace(QStringLiteral("[*]"),
                                        window.isWindowModified() ? QStringLiteral("*") : QString());
}

void paintTitle(QPainter& painter, const QRect& bar, const QString& title)
{
    painter.fillRect(bar, kTitleGround);
    painter.setPen(Qt::black);
    painter.drawText(bar, Qt::AlignCenter, title);
    const QRect cross(bar.right() - 2 * kCrossSide, bar.center().y() - kCrossSide / 2, kCrossSide, kCrossSide);
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());
}

} // namespace

void takePicture(QWidget& window, const QString& folder, const QString& name)
{
    QCoreApplication::processEvents();
    const QPixmap inside = window.grab();
    QImage picture(inside.size() + QSize(2, kTitleHeight + 2), QImage::Format_RGB32);
    picture.fill(kLine);
    QPainter painter(&picture);
    painter.setFont(window.font());
    paintTitle(painter, QRect(1, 1, inside.width(), kTitleHeight), shownTitle(window));
    painter.drawPixmap(1, kTitleHeight + 1, inside);
    painter.end();
    if (!picture.save(folder + u'/' + name + QStringLiteral(".png")))
        qFatal("the picture %s cannot be written to %s", qPrintable(name), qPrintable(folder));
}
