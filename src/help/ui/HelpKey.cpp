#include "HelpKey.h"

#include "HelpFiles.h"
#include "MessageTopics.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>

#include <algorithm>

namespace {

bool isHelpKey(const QEvent& event)
{
    const auto& key = static_cast<const QKeyEvent&>(event);
    return (key.key() == Qt::Key_F1 || key.key() == Qt::Key_Help) && key.modifiers() == Qt::NoModifier;
}

// The name by which the table knows it: of a tab strip that of its tab, of a menu that of its command.
QString nameOf(const QWidget& widget)
{
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget))
        return QStringLiteral("%1_%2").arg(tabs->objectName()).arg(tabs->currentIndex());
    if (const auto* menu = qobject_cast<const QMenu*>(&widget))
        return menu->activeAction() == nullptr ? QString() : menu->activeAction()->objectName();
    return widget.objectName();
}

} // namespace

HelpKey::HelpKey(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    qApp->installEventFilter(this);
}

HelpKey::~HelpKey() = default;

// An override first: else a shortcut of the menu would take the key, or the widget under it.
bool HelpKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return false;
    if (!watched->isWidgetType() || !isHelpKey(*event))
        return false;
    event->accept();
    if (event->type() == QEvent::KeyPress)
        openFor(static_cast<const QWidget*>(watched));
    return true;
}

void HelpKey::openFor(const QWidget* focused)
{
    const QString folder = platform::helpEdition(m_parts.paths, m_parts.helpFile());
    const HelpTopic topic = topicOf(focused, folder);
    // An open menu or list would take every click until it has closed.
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (!popup->close())
            break;
    }
    if (m_window == nullptr)
        m_window = std::make_unique<platform::HelpWindow>(m_parts.translate);
    m_window->showPage(folder, topic.page, topic.anchor);
}

QVector<HelpPlace> HelpKey::placesOf(const QWidget* focused)
{
    QVector<HelpPlace> places;
    for (const QWidget* widget = focused; widget != nullptr; widget = widget->parentWidget()) {
        const QString window = widget->window()->objectName();
        const QString name = nameOf(*widget);
        if (!name.isEmpty())
            places.append({window, name});
        if (widget->isWindow())
            places.append({window, QString()});
    }
    return places;
}

HelpTopic HelpKey::detailOf(const QVector<HelpPlace>& places, const QString& folder) const
{
    const bool isHere = std::any_of(places.begin(), places.end(),
                                    [this](const HelpPlace& place) { return place.control == m_parts.detail.control; });
    const HelpTopic topic = isHere ? m_parts.detail.topic() : HelpTopic();
    return platform::hasHelpAnchor(folder, topic.page, topic.anchor) ? topic : HelpTopic();
}

HelpTopic HelpKey::topicOf(const QWidget* focused, const QString& folder) const
{
    const QVector<HelpPlace> places = placesOf(focused);
    const HelpTopic detail = detailOf(places, folder);
    if (!detail.page.isEmpty())
        return detail;
    HelpTopic topic = helpTopic(places);
    const QWidget* window = focused == nullptr ? nullptr : focused->window();
    const auto* message = window == nullptr || topic.page != u"messages.html"
                              ? nullptr
                              : window->findChild<const QLabel*>(QStringLiteral("lblMessage"));
    if (message != nullptr) {
        const QString id = MessageTopics(platform::helpPage(folder, topic.page)).idOf(message->text());
        if (!id.isEmpty())
            topic.anchor = id;
    }
    return topic;
}
