#pragma once

#include "FormControls.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

// A control without a widget: what it lacks reads as nothing.
class FakeControl : public platform::FormControl
{
public:
    FakeControl(const char* name, std::optional<int> index, platform::ControlKind kind,
                const QHash<platform::FormProperty, QString>& properties)
        : values(properties), m_design(properties), m_name(QLatin1String(name)), m_index(index), m_kind(kind)
    {}

    QString name() const override { return m_name; }
    std::optional<int> index() const override { return m_index; }
    platform::ControlKind kind() const override { return m_kind; }
    std::optional<QString> property(platform::FormProperty which) const override
    {
        return m_design.contains(which) ? std::optional(m_design[which]) : std::nullopt;
    }
    void setProperty(platform::FormProperty which, const QString& text) override
    {
        if (values.contains(which))
            values[which] = text;
    }
    std::vector<int> parts() const override { return numbers; }
    QString partProperty(int part, platform::FormProperty) const override { return partTexts.value(part); }
    void setPartProperty(int part, platform::FormProperty which, const QString& text) override
    {
        if (which == platform::FormProperty::Caption)
            partTexts[part] = text;
    }

    QHash<platform::FormProperty, QString> values;
    std::vector<int> numbers;
    QHash<int, QString> partTexts;

private:
    QHash<platform::FormProperty, QString> m_design;
    QString m_name;
    std::optional<int> m_index;
    platform::ControlKind m_kind;
};

inline const QHash<platform::FormProperty, QString> kFullControl{
    {platform::FormProperty::Caption, QStringLiteral("Text")},
    {platform::FormProperty::Font, QStringLiteral("Sans")},
    {platform::FormProperty::FontSize, QStringLiteral("9")},
    {platform::FormProperty::FontCharSet, QStringLiteral("0")},
    {platform::FormProperty::ToolTipText, QString()}};

class FakeForm : public platform::Form
{
public:
    FakeControl& add(const char* name, std::optional<int> index,
                     platform::ControlKind kind = platform::ControlKind::Plain,
                     const QHash<platform::FormProperty, QString>& properties = kFullControl)
    {
        m_controls.push_back(std::make_unique<FakeControl>(name, index, kind, properties));
        return *m_controls.back();
    }

    QString name() const override { return QStringLiteral("frmX"); }
    std::optional<QString> property(platform::FormProperty which) const override
    {
        return which == platform::FormProperty::Caption ? values.value(which) : m_design.value(which);
    }
    void setProperty(platform::FormProperty which, const QString& text) override { values[which] = text; }
    QString designCaption() const override { return QStringLiteral("Design"); }
    std::vector<platform::FormControl*> controls() const override
    {
        std::vector<platform::FormControl*> all;
        for (const auto& control : m_controls)
            all.push_back(control.get());
        return all;
    }

    QHash<platform::FormProperty, QString> values{{platform::FormProperty::Caption, QStringLiteral("Design")},
                                                  {platform::FormProperty::Font, QStringLiteral("Sans")},
                                                  {platform::FormProperty::FontSize, QStringLiteral("9")},
                                                  {platform::FormProperty::FontCharSet, QStringLiteral("0")}};

private:
    const QHash<platform::FormProperty, QString> m_design = values;
    std::vector<std::unique_ptr<FakeControl>> m_controls;
};
