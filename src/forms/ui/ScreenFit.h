#pragma once

#include <QObject>

class QDialog;
class QWidget;

namespace platform {

// Keeps the windows of the program on the screen while it exists: one that is shown larger than the room that the
// screen leaves, or with its title bar outside, is made smaller and moved; a dialog whose controls need more room can
// be scrolled. The wheel scrolls what is behind a closed list, whose choice would change unseen. It watches the
// application's events.
class ScreenFit : public QObject
{
    Q_OBJECT

public:
    ScreenFit();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void fit(QWidget& window);
    static void makeScrollable(QDialog& dialog);
};

} // namespace platform
