#pragma once

#include "FormPlacement.h"

#include <QWidget>

namespace platform {

constexpr int kTwipsPerPixel = 15; // of a device-independent pixel

int pixels(int twips); // rounded
int twips(int pixels);
QRect twips(const QRect& pixels);

// The largest inner size with which a window, its frame included, has room on its screen.
QSize roomFor(const QWidget& window);

// The place of a window. The size is that of its inner area and the position that of its frame, because the frame is
// the window manager's and not known before the window is shown. A form with a splitter derives from it. The window is
// kept, not owned.
class WidgetPlacement : public FormPlacement
{
public:
    explicit WidgetPlacement(QWidget& form, const QString& name, const QString& id = {});

    QString name() const override { return m_name; }
    QString id() const override { return m_id; }
    WindowState windowState() const override;
    QRect boundsTwips() const override;
    void setBoundsTwips(const QRect& bounds) override;
    QVector<QRect> screensTwips() const override;

private:
    QWidget& m_form;
    QString m_name;
    QString m_id;
};

} // namespace platform
