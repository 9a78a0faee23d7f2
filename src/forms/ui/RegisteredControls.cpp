#include "RegisteredControls.h"

#include "FontSize.h"
#include "Fonts.h"
#include "Numbers.h"
#include "VisibleText.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>

#include <numeric>

namespace platform {

namespace {

std::optional<QString> captionOf(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget))
        return box->title();
    return {};
}

void setCaption(QWidget& widget, const QString& text)
{
    if (auto* label = qobject_cast<QLabel*>(&widget))
        label->setText(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(&widget))
        button->setText(text);
    else if (auto* box = qobject_cast<QGroupBox*>(&widget))
        box->setTitle(text);
}

} // namespace

RegisteredControl::RegisteredControl(const QString& name, std::optional<int> index, ControlKind kind)
    : m_name(name), m_index(index), m_kind(kind)
{}

RegisteredWidget::RegisteredWidget(QWidget& widget, const QString& name, std::optional<int> index, ControlKind kind)
    : RegisteredControl(name, index, kind), m_widget(widget), m_caption(captionOf(widget)), m_toolTip(widget.toolTip())
{}

std::optional<QString> RegisteredWidget::property(FormProperty which) const
{
    switch (which) {
    case FormProperty::Caption:
        return m_caption;
    case FormProperty::Font:
        return Face().family;
    case FormProperty::FontSize:
        return doubleText(Face().size);
    case FormProperty::FontCharSet:
        return QString::number(Face().charSet);
    case FormProperty::ToolTipText:
        return m_toolTip;
    }
    return {};
}

void RegisteredWidget::setProperty(FormProperty which, const QString& text)
{
    switch (which) {
    case FormProperty::Caption:
        if (m_caption)
            setCaption(m_widget, visibleText(text));
        return;
    case FormProperty::ToolTipText:
        m_widget.setToolTip(visibleLines(text));
        return;
    case FormProperty::Font:
        m_face.family = text;
        break;
    case FormProperty::FontSize: {
        const double points = parseDouble(text).value_or(m_face.size);
        m_face.size = points == 0 ? 0 : boundedFontSize(points, m_face.size); // 0: the desktop's own
        break;
    }
    case FormProperty::FontCharSet:
        m_face.charSet = parseInt32(text).value_or(m_face.charSet);
        break;
    }
    applyFace();
}

void RegisteredWidget::applyFace()
{
    m_widget.setFont(namedFont(m_face.family, m_face.size, m_widget.font().bold()));
}

RegisteredItem::RegisteredItem(QAction& action, const QString& name, std::optional<int> index)
    : RegisteredControl(name, index, ControlKind::Plain), m_action(action), m_caption(action.text())
{}

std::optional<QString> RegisteredItem::property(FormProperty which) const
{
    return which == FormProperty::Caption ? std::optional(m_caption) : std::nullopt;
}

void RegisteredItem::setProperty(FormProperty which, const QString& text)
{
    if (which == FormProperty::Caption)
        m_action.setText(visibleText(text));
}

RegisteredTabs::RegisteredTabs(QTabWidget& tabs, const QString& name, std::optional<int> index)
    : RegisteredWidget(tabs, name, index, ControlKind::TabStrip), m_tabs(tabs)
{
    for (int i = 0; i < tabs.count(); ++i)
        m_captions << tabs.tabText(i);
}

std::vector<int> RegisteredTabs::parts() const
{
    std::vector<int> numbers(static_cast<size_t>(m_captions.size()));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

QString RegisteredTabs::partProperty(int part, FormProperty which) const
{
    return which == FormProperty::Caption ? m_captions.value(part) : QString();
}

void RegisteredTabs::setPartProperty(int part, FormProperty which, const QString& text)
{
    if (which == FormProperty::Caption)
        m_tabs.setTabText(part, visibleText(text));
}

RegisteredToolbar::RegisteredToolbar(QToolBar& bar, const QList<QAction*>& buttons, const QString& name,
                                     std::optional<int> index)
    : RegisteredWidget(bar, name, index, ControlKind::Toolbar)
{
    for (QAction* action : buttons)
        m_buttons.push_back({action, action->iconText(), action->toolTip()});
}

std::vector<int> RegisteredToolbar::parts() const
{
    std::vector<int> numbers(m_buttons.size());
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

QString RegisteredToolbar::partProperty(int part, FormProperty which) const
{
    const Button& button = m_buttons.at(static_cast<size_t>(part) - 1);
    return which == FormProperty::Caption ? button.caption : button.toolTip;
}

void RegisteredToolbar::setPartProperty(int part, FormProperty which, const QString& text)
{
    QAction* action = m_buttons.at(static_cast<size_t>(part) - 1).action;
    if (which == FormProperty::Caption)
        action->setIconText(visibleText(text));
    else
        action->setToolTip(visibleLines(text));
}

} // namespace platform
