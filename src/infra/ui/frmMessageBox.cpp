#include "frmMessageBox.h"

#include "MessageBoxLayout.h"
#include "MessageIcons.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <limits>

using platform::pixels;
using platform::twips;

namespace {

const QString kName = QStringLiteral("frmMessageBox");
constexpr QPoint kIconAt(28, 24);
constexpr int kIconSide = 32;
constexpr int kWidestLine = 560; // a longer line is hard to read
constexpr int kMargins = 40;     // between the largest box and the edges of the screen
constexpr int kMillisecondsPerSecond = 1000;
constexpr int kLongestTimer = std::numeric_limits<int>::max() / kMillisecondsPerSecond;

QRect roomFor(const QWidget* owner)
{
    const QScreen* screen = owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen();
    return screen->availableGeometry();
}

} // namespace

frmMessageBox::frmMessageBox(clsLibrary& library)
    : m_library(library), m_controls(*this, kName), m_placement(*this, kName), m_icon(new QLabel(this)),
      m_messageArea(new QScrollArea(this)), m_lblMessage(new QLabel),
      m_Timer1(library.context().machine.clock.makeTimer())
{
    setObjectName(kName);
    setWindowModality(Qt::ApplicationModal);
    setupControls();
    connectControls();
}

frmMessageBox::~frmMessageBox() = default;

void frmMessageBox::setupControls()
{
    m_icon->setObjectName(QStringLiteral("icon"));
    m_icon->setGeometry({kIconAt, QSize(kIconSide, kIconSide)});
    m_lblMessage->setObjectName(QStringLiteral("lblMessage"));
    m_lblMessage->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_lblMessage->setWordWrap(true);
    m_lblMessage->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_messageArea->setFrameShape(QFrame::NoFrame);
    m_messageArea->setFocusPolicy(Qt::NoFocus);
    m_messageArea->setWidget(m_lblMessage);
    m_messageArea->viewport()->setAutoFillBackground(false);
    m_lblMessage->setAutoFillBackground(false);
    m_controls.add(m_lblMessage, m_lblMessage->objectName());
    for (int i = 0; i < static_cast<int>(m_cmdCommand.size()); ++i) {
        auto* button = new QPushButton(this);
        button->setObjectName(QStringLiteral("cmdCommand_%1").arg(i));
        m_cmdCommand.at(static_cast<size_t>(i)) = button;
        m_controls.add(button, QStringLiteral("cmdCommand"), i);
    }
}

void frmMessageBox::connectControls()
{
    for (int i = 0; i < static_cast<int>(m_cmdCommand.size()); ++i) {
        connect(m_cmdCommand.at(static_cast<size_t>(i)), &QPushButton::clicked, this, [this, i] {
            m_answer = i;
            accept();
        });
    }
    connect(m_Timer1.get(), &platform::Timer::timeout, this, [this] {
        m_answer = m_plan.defaultIndex();
        accept();
    });
}

int frmMessageBox::MsgBox(const QString& Prompt, int Buttons, const QString& Title, QWidget* frmOwner, int lTimer)
{
    return MsgBox({Prompt, Buttons, Title, lTimer, {}}, frmOwner);
}

int frmMessageBox::MsgBox(const Message& message, QWidget* frmOwner)
{
    m_plan = MessageBoxPlan(message.style, message.extra);
    m_answer = m_plan.escapeIndex();
    m_library.tranForm(m_controls);
    setTexts(message.prompt, message.title);
    setIcon();
    const QRect room = roomFor(frmOwner);
    layOut(room);
    placeOver(frmOwner, room);
    startTimer(message.timerSeconds);
    exec();
    m_Timer1->stop();
    return m_plan.buttons().at(m_answer).result;
}

void frmMessageBox::setTexts(const QString& prompt, const QString& title)
{
    setWindowTitle(platform::visibleText(title.isEmpty() ? m_library.context().machine.folders.baseName() : title));
    m_lblMessage->setText(MessageBoxPlan::shownText(prompt));
    for (int i = 0; i < static_cast<int>(m_cmdCommand.size()); ++i) {
        QPushButton* button = m_cmdCommand.at(static_cast<size_t>(i));
        const bool used = i < m_plan.buttons().size();
        button->setVisible(used);
        button->setText(used ? platform::visibleText(m_library.tranStr(m_plan.buttons().at(i).caption)) : QString());
        button->setDefault(i == m_plan.defaultIndex());
    }
}

void frmMessageBox::setIcon()
{
    m_icon->setVisible(m_plan.icon() != MessageIcon::None);
    m_icon->setAccessibleName(platform::visibleText(m_library.tranStr(messageIconName(m_plan.icon()))));
    m_icon->setPixmap(messagePixmap(m_plan.icon(), kIconSide, devicePixelRatio()));
}

// A short message stands level with the middle of the icon.
void frmMessageBox::layOut(const QRect& room)
{
    const QSize around(pixels(MessageBoxLayout({0, {}, 1, {}}).form.width()) + kMargins, 3 * kMargins + kIconAt.y());
    const QSize button = buttonSize();
    const QSize label = setLabelSize(room.size() - around - QSize(0, button.height()));
    const int labelTop = kIconAt.y() + std::max(0, (kIconSide - label.height()) / 2);
    const MessageBoxLayout places({twips(labelTop),
                                   {twips(label.width()), twips(label.height())},
                                   static_cast<int>(m_plan.buttons().size()),
                                   {twips(button.width()), twips(button.height())}});
    setFixedSize(pixels(places.form.width()), pixels(places.form.height()));
    m_messageArea->setGeometry({QPoint(pixels(MessageBoxLayout::kLabelLeft), labelTop), label});
    for (int i = 0; i < places.buttonLefts.size(); ++i)
        m_cmdCommand.at(static_cast<size_t>(i))
            ->setGeometry({QPoint(pixels(places.buttonLefts.at(i)), pixels(places.buttonsTop)), button});
}

// Lines are wrapped where that makes them readable; a word that is longer makes the label wider. Returns how much of
// the label is seen at once.
QSize frmMessageBox::setLabelSize(const QSize& most)
{
    m_lblMessage->ensurePolished();
    const QRect asked(0, 0, std::min(kWidestLine, most.width()), QWIDGETSIZE_MAX);
    const QRect text = m_lblMessage->fontMetrics().boundingRect(
        asked, static_cast<int>(Qt::AlignLeft | Qt::AlignTop) | Qt::TextWordWrap, m_lblMessage->text());
    const int width = text.width() + 2; // italics and rounding reach over the measured width
    const QSize whole(width, std::max(text.height(), m_lblMessage->heightForWidth(width)));
    m_lblMessage->resize(whole);
    if (whole.width() <= most.width() && whole.height() <= most.height())
        return whole;
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return (whole + QSize(bar, bar)).boundedTo(most);
}

QSize frmMessageBox::buttonSize() const
{
    QSize size(pixels(MessageBoxLayout::kButtonWidth), pixels(MessageBoxLayout::kButtonHeight));
    for (const QPushButton* button : m_cmdCommand)
        size = size.expandedTo(button->sizeHint());
    return size;
}

void frmMessageBox::placeOver(const QWidget* owner, const QRect& room)
{
    const bool hasOwner = owner != nullptr && owner->isVisible();
    const QWidget* window = hasOwner ? owner->window() : nullptr;
    const QRect below = hasOwner ? QRect(window->pos(), window->size()) : room;
    QPoint at = MessageBoxLayout::over(below, size());
    at.setX(std::max(room.left(), std::min(at.x(), room.right() + 1 - width())));
    at.setY(std::max(room.top(), std::min(at.y(), room.bottom() + 1 - height())));
    move(at);
    winId(); // makes the native window, which the owner is set on
    windowHandle()->setTransientParent(hasOwner ? window->windowHandle() : nullptr);
}

void frmMessageBox::startTimer(int seconds)
{
    if (seconds > 0)
        m_Timer1->start(std::min(seconds, kLongestTimer) * kMillisecondsPerSecond);
}

void frmMessageBox::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m_cmdCommand.at(static_cast<size_t>(m_plan.defaultIndex()))->setFocus();
    activateWindow();
}

void frmMessageBox::done(int result)
{
    m_library.saveFormSize(m_placement);
    QDialog::done(result);
}
