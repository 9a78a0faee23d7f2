#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace platform {

// What of a form or control can be put into another language.
enum class FormProperty { Caption, Font, FontSize, FontCharSet, ToolTipText };

// Controls that are translated in their own way; everything else is plain.
enum class ControlKind { Plain, Grid, TabStrip, Toolbar, StatusBar };

// A control as translation sees it, without a widget. A property that the control lacks reads as nothing and is ignored
// when set; so is a text that makes no sense for it. All read as they were designed, not as they were set last, so that
// a language file is completed with English texts and designed fonts only.
class FormControl
{
public:
    virtual ~FormControl() = default;

    virtual QString name() const = 0;
    virtual std::optional<int> index() const = 0; // in its control array; nothing outside arrays
    virtual ControlKind kind() const = 0;
    virtual std::optional<QString> property(FormProperty which) const = 0;
    virtual void setProperty(FormProperty which, const QString& text) = 0;

    // Tabs (numbered from 0) and toolbar buttons (numbered from 1); Caption and ToolTipText only.
    virtual std::vector<int> parts() const { return {}; }
    virtual QString partProperty(int part, FormProperty which) const;
    virtual void setPartProperty(int part, FormProperty which, const QString& text);
};

// A form with its controls in a fixed order.
class Form
{
public:
    virtual ~Form() = default;

    virtual QString name() const = 0;
    // The caption alone reads as it is now: it may carry the name of a document.
    virtual std::optional<QString> property(FormProperty which) const = 0;
    virtual void setProperty(FormProperty which, const QString& text) = 0;
    virtual QString designCaption() const = 0;
    virtual std::vector<FormControl*> controls() const = 0;
};

} // namespace platform
