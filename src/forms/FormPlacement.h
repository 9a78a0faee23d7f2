#pragma once

#include <QRect>
#include <QString>
#include <QVector>

#include <optional>

namespace platform {

enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

// A form's place on the desktop as persistence sees it, without a widget. All lengths are twips, 15 to a pixel at
// 96 dpi.
class FormPlacement
{
public:
    virtual ~FormPlacement() = default;

    virtual QString name() const = 0;
    virtual QString id() const { return {}; } // of one of several forms of that name
    virtual WindowState windowState() const = 0;

    virtual QRect boundsTwips() const = 0;
    virtual void setBoundsTwips(const QRect& bounds) = 0;

    // The position of the form's splitter; nothing for a form without one.
    virtual std::optional<int> splitLeftTwips() const { return {}; }
    virtual void setSplitLeftTwips(int /*left*/) {}

    // What each screen leaves to windows, the primary one first.
    virtual QVector<QRect> screensTwips() const = 0;
};

} // namespace platform
