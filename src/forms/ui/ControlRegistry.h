#pragma once

#include "FormControls.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QAction;
class QMenu;
class QStatusBar;
class QTabWidget;
class QToolBar;
class QWidget;

namespace platform {

// The controls of one form under the names and indexes that language files use, in the order of registration. Register
// every control once, with its English text set, when the form has been built; then hand the registry to translation.
// The labels of the form show their texts as they are, and what comes from a language file is made visible. Controls
// belong to the form and must outlive the registry.
class ControlRegistry final : public Form
{
public:
    ControlRegistry(QWidget& form, const QString& name);
    ~ControlRegistry() override;
    ControlRegistry(const ControlRegistry&) = delete;
    ControlRegistry& operator=(const ControlRegistry&) = delete;

    // index: the place in a control array; nothing for a single control.
    void add(QWidget* control, const QString& name, std::optional<int> index = std::nullopt);
    void add(QAction* item, const QString& name, std::optional<int> index = std::nullopt);
    void add(QMenu* menu, const QString& name, std::optional<int> index = std::nullopt);
    void add(QTabWidget* tabs, const QString& name, std::optional<int> index = std::nullopt);
    void add(QToolBar* bar, const QList<QAction*>& buttons, const QString& name,
             std::optional<int> index = std::nullopt);
    void add(QStatusBar* bar, const QString& name, std::optional<int> index = std::nullopt);
    void add(std::unique_ptr<FormControl> control); // of any other kind

    QString name() const override { return m_name; }
    std::optional<QString> property(FormProperty which) const override;
    void setProperty(FormProperty which, const QString& text) override;
    QString designCaption() const override { return m_designCaption; }
    std::vector<FormControl*> controls() const override;

private:
    QWidget& m_form;
    QString m_name;
    QString m_designCaption;
    std::unique_ptr<FormControl> m_face; // font of the form itself
    std::vector<std::unique_ptr<FormControl>> m_controls;
};

} // namespace platform
