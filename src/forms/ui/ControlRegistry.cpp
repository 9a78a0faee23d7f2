#include "ControlRegistry.h"

#include "PlainTexts.h"
#include "RegisteredControls.h"
#include "VisibleText.h"

namespace platform {

ControlRegistry::ControlRegistry(QWidget& form, const QString& name)
    : m_form(form), m_name(name), m_designCaption(form.windowTitle()),
      m_face(std::make_unique<RegisteredWidget>(form, name, std::nullopt, ControlKind::Plain))
{
    showTextsPlain(form);
}

ControlRegistry::~ControlRegistry() = default;

void ControlRegistry::add(std::unique_ptr<FormControl> control)
{
    m_controls.push_back(std::move(control));
}

void ControlRegistry::add(QWidget* control, const QString& name, std::optional<int> index)
{
    showTextsPlain(*control); // it may have come to the form after the registry
    add(std::make_unique<RegisteredWidget>(*control, name, index, ControlKind::Plain));
}

void ControlRegistry::add(QAction* item, const QString& name, std::optional<int> index)
{
    add(std::make_unique<RegisteredItem>(*item, name, index));
}

void ControlRegistry::add(QMenu* menu, const QString& name, std::optional<int> index)
{
    add(std::make_unique<RegisteredItem>(*menu->menuAction(), name, index));
}

void ControlRegistry::add(QTabWidget* tabs, const QString& name, std::optional<int> index)
{
    add(std::make_unique<RegisteredTabs>(*tabs, name, index));
}

void ControlRegistry::add(QToolBar* bar, const QList<QAction*>& buttons, const QString& name, std::optional<int> index)
{
    add(std::make_unique<RegisteredToolbar>(*bar, buttons, name, index));
}

void ControlRegistry::add(QStatusBar* bar, const QString& name, std::optional<int> index)
{
    add(std::make_unique<RegisteredWidget>(*bar, name, index, ControlKind::StatusBar));
}

std::optional<QString> ControlRegistry::property(FormProperty which) const
{
    return which == FormProperty::Caption ? m_form.windowTitle() : m_face->property(which);
}

void ControlRegistry::setProperty(FormProperty which, const QString& text)
{
    if (which == FormProperty::Caption)
        m_form.setWindowTitle(visibleText(text));
    else
        m_face->setProperty(which, text);
}

std::vector<FormControl*> ControlRegistry::controls() const
{
    std::vector<FormControl*> all;
    for (const auto& control : m_controls)
        all.push_back(control.get());
    return all;
}

} // namespace platform
