#include "ScreenFit.h"

#include "PlaceBeside.h"
#include "WidgetPlacement.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace platform {

namespace {

constexpr int kFrameMs = 300;

}

ScreenFit::ScreenFit()
{
    qApp->installEventFilter(this);
}

// When the window is there, and whatever it does about its own size is done; and once more when the window manager has
// had time for the frame, of which it says nothing when that is there.
bool ScreenFit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched) != nullptr) {
        event->ignore();
        return true;
    }
    auto* window = qobject_cast<QWidget*>(watched);
    const auto isOrdinary = [&] { return window->windowType() == Qt::Window || window->windowType() == Qt::Dialog; };
    if (event->type() == QEvent::Show && !event->spontaneous() && window != nullptr && window->isWindow() &&
        isOrdinary()) {
        for (const int delayMs : {0, kFrameMs})
            QTimer::singleShot(delayMs, window, [window] { fit(*window); });
    }
    return false;
}

void ScreenFit::fit(QWidget& window)
{
    if (!window.isVisible() || window.windowState() != Qt::WindowNoState)
        return;
    const QSize room = roomFor(window);
    auto* dialog = qobject_cast<QDialog*>(&window);
    const QSize least = window.minimumSizeHint();
    if (dialog != nullptr && (least.height() > room.height() || least.width() > room.width()))
        makeScrollable(*dialog);
    const QSize fitting = window.size().boundedTo(room);
    if (fitting != window.size())
        window.resize(fitting);
    const QRect whole = window.frameGeometry();
    const QRect screen = window.screen()->availableGeometry();
    if (!screen.contains(whole))
        window.move(placeInside(whole, screen));
}

void ScreenFit::makeScrollable(QDialog& dialog)
{
    QWidget* focused = dialog.focusWidget();
    auto* content = new QWidget;
    content->setLayout(dialog.layout()); // takes the controls along
    auto* area = new QScrollArea(&dialog);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    auto* layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);
    dialog.setMinimumSize(0, 0);
    area->show();
    if (focused != nullptr)
        focused->setFocus();
}

} // namespace platform
