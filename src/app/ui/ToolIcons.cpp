#include "ToolIcons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

// The colours that the pictures are drawn in, and what the second one becomes.
const QByteArray kLine = "#1a1a1a";
const QByteArray kAccent = "#0a6ebd";
const QByteArray kAccentOnDark = "#63b3f5";
constexpr int kDarkLightness = 128; // of a window background, 0 to 255

class ToolIconEngine final : public QIconEngine
{
public:
    explicit ToolIconEngine(const QByteArray& picture) : m_picture(picture) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        QSvgRenderer renderer(coloured(mode));
        const int side = std::min(rect.width(), rect.height());
        QRectF place(0, 0, side, side);
        place.moveCenter(QRectF(rect).center());
        renderer.render(painter, place);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal) override
    {
        const QByteArray picture = coloured(mode);
        const QString key = QStringLiteral("toolIcon%1x%2-%3").arg(size.width()).arg(size.height()).arg(qHash(picture));
        QPixmap drawn;
        if (QPixmapCache::find(key, &drawn))
            return drawn;
        drawn = pixmap(size, mode, state);
        QPixmapCache::insert(key, drawn);
        return drawn;
    }

    QIconEngine* clone() const override { return new ToolIconEngine(*this); }

private:
    QByteArray coloured(QIcon::Mode mode) const
    {
        const QPalette colors = QGuiApplication::palette();
        const bool isDisabled = mode == QIcon::Disabled;
        const QColor line = colors.color(isDisabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
        const bool isDark = colors.color(QPalette::Button).lightness() < kDarkLightness;
        QByteArray picture = m_picture;
        if (isDisabled || isDark)
            picture.replace(kAccent, isDisabled ? line.name().toLatin1() : kAccentOnDark);
        return picture.replace(kLine, line.name().toLatin1());
    }

    QByteArray m_picture;
};

} // namespace

QIcon toolIcon(const QString& name)
{
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? QIcon(new ToolIconEngine(file.readAll())) : QIcon();
}
