#include "WidgetPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>

namespace platform {

int pixels(int twips)
{
    return qRound(static_cast<double>(twips) / kTwipsPerPixel);
}

int twips(int pixels)
{
    return pixels * kTwipsPerPixel;
}

QRect twips(const QRect& pixels)
{
    return {twips(pixels.left()), twips(pixels.top()), twips(pixels.width()), twips(pixels.height())};
}

QSize roomFor(const QWidget& window)
{
    // The frame is the window manager's and not known yet; the style's title bar is about as high.
    const int bar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const int side = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    return window.screen()->availableSize() - QSize(2 * side, bar + 2 * side);
}

WidgetPlacement::WidgetPlacement(QWidget& form, const QString& name, const QString& id)
    : m_form(form), m_name(name), m_id(id)
{}

WindowState WidgetPlacement::windowState() const
{
    if (m_form.isMinimized())
        return WindowState::Minimized;
    return m_form.isMaximized() || m_form.isFullScreen() ? WindowState::Maximized : WindowState::Normal;
}

QRect WidgetPlacement::boundsTwips() const
{
    return twips(QRect(m_form.pos(), m_form.size()));
}

void WidgetPlacement::setBoundsTwips(const QRect& bounds)
{
    m_form.resize(pixels(bounds.width()), pixels(bounds.height()));
    m_form.move(pixels(bounds.left()), pixels(bounds.top()));
}

QVector<QRect> WidgetPlacement::screensTwips() const
{
    QVector<QRect> all;
    const QScreen* primary = QGuiApplication::primaryScreen();
    for (const QScreen* screen : QGuiApplication::screens())
        all.insert(screen == primary ? 0 : all.size(), twips(screen->availableGeometry()));
    return all;
}

} // namespace platform
