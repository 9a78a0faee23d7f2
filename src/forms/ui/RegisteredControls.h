#pragma once

#include "FormControls.h"

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QStatusBar>
#include <QString>
#include <QTabWidget>
#include <QToolBar>
#include <QWidget>

namespace platform {

// What every kind of registered control shares: its name, and the texts that it was designed with.
class RegisteredControl : public FormControl
{
public:
    RegisteredControl(const QString& name, std::optional<int> index, ControlKind kind);

    QString name() const override { return m_name; }
    std::optional<int> index() const override { return m_index; }
    ControlKind kind() const override { return m_kind; }

private:
    QString m_name;
    std::optional<int> m_index;
    ControlKind m_kind;
};

// A widget: its caption is the text of a label, button, option, check or group box; other widgets have none.
class RegisteredWidget : public RegisteredControl
{
public:
    RegisteredWidget(QWidget& widget, const QString& name, std::optional<int> index, ControlKind kind);

    std::optional<QString> property(FormProperty which) const override;
    void setProperty(FormProperty which, const QString& text) override;

protected:
    // Nominal names: the font that is shown may be another one. As made here it is the designed one.
    struct Face
    {
        QString family = QStringLiteral("System");
        double size = 0;
        int charSet = 0;
    };
    const Face& face() const { return m_face; }
    virtual void applyFace();

private:
    QWidget& m_widget;
    std::optional<QString> m_caption;
    QString m_toolTip;
    Face m_face;
};

// A menu or menu item. Its font is the desktop's.
class RegisteredItem final : public RegisteredControl
{
public:
    RegisteredItem(QAction& action, const QString& name, std::optional<int> index);

    std::optional<QString> property(FormProperty which) const override;
    void setProperty(FormProperty which, const QString& text) override;

private:
    QAction& m_action;
    QString m_caption;
};

// The captions of the tabs.
class RegisteredTabs final : public RegisteredWidget
{
public:
    RegisteredTabs(QTabWidget& tabs, const QString& name, std::optional<int> index);

    std::vector<int> parts() const override; // from 0
    QString partProperty(int part, FormProperty which) const override;
    void setPartProperty(int part, FormProperty which, const QString& text) override;

private:
    QTabWidget& m_tabs;
    QStringList m_captions;
};

// Its buttons, in the order of their numbers in language files, which may stand in another order in the bar. Captions
// are the actions' icon texts: a menu may show the same action with a text of its own.
class RegisteredToolbar final : public RegisteredWidget
{
public:
    RegisteredToolbar(QToolBar& bar, const QList<QAction*>& buttons, const QString& name, std::optional<int> index);

    std::vector<int> parts() const override; // from 1
    QString partProperty(int part, FormProperty which) const override;
    void setPartProperty(int part, FormProperty which, const QString& text) override;

private:
    struct Button
    {
        QAction* action;
        QString caption;
        QString toolTip;
    };
    std::vector<Button> m_buttons;
};

} // namespace platform
