#include "MainStatusBar.h"

#include "AccessibleNames.h"
#include "VisibleText.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace {

// A text that is too long for its place ends in dots; the tool tip has it whole.
class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        const QRect place = contentsRect().adjusted(margin(), 0, -margin(), 0);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, place.width());
        style()->drawItemText(&painter, place, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft), palette(),
                              isEnabled(), shown, foregroundRole());
    }
};

} // namespace

MainStatusBar::MainStatusBar(QWidget* parent)
    : QStatusBar(parent), m_model(addPanel(QStringLiteral("panelModel"), QStringLiteral("Model"), 0)),
      m_link(addPanel(QStringLiteral("panelLink"), QStringLiteral("Serial link"), 2)),
      m_state(addPanel(QStringLiteral("panelState"), QStringLiteral("State of the data"), 1)),
      m_hint(addPanel(QStringLiteral("panelHint"), QStringLiteral("Current parameter"), 3)),
      m_changes(addButton(QStringLiteral("panelChanges"))), m_write(addButton(QStringLiteral("panelWrite")))
{
    setObjectName(QStringLiteral("stbMain"));
    platform::nameWidget(*this, QStringLiteral("Status"));
    connect(m_changes, &QToolButton::clicked, this, &MainStatusBar::changesClicked);
    connect(m_write, &QToolButton::clicked, this, &MainStatusBar::writeClicked);
}

QLabel* MainStatusBar::addPanel(const QString& objectName, const QString& accessibleName, int stretch)
{
    auto* panel = new ElidedLabel(this);
    panel->setObjectName(objectName);
    platform::nameWidget(*panel, accessibleName);
    // A long reason must not force the window to its own width: the panels share the width that there is.
    panel->setMinimumWidth(1);
    panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    panel->setMargin(3);
    addWidget(panel, stretch);
    return panel;
}

QToolButton* MainStatusBar::addButton(const QString& objectName)
{
    auto* button = new QToolButton(this);
    button->setObjectName(objectName);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->hide();
    addPermanentWidget(button);
    return button;
}

void MainStatusBar::setChangesText(const QString& text)
{
    m_changes->setText(platform::visibleText(text));
    m_changes->setAccessibleName(m_changes->text());
    m_changes->setVisible(!text.isEmpty());
}

void MainStatusBar::showIn(QLabel& panel, const QString& text, const QString& toolTip)
{
    panel.setText(platform::visibleLines(text));
    panel.setToolTip(platform::visibleLines(toolTip));
}

void MainStatusBar::setModelText(const QString& text)
{
    showIn(*m_model, text, text);
}

void MainStatusBar::setLinkText(const QString& text)
{
    showIn(*m_link, text, text);
}

void MainStatusBar::setStateText(const QString& text, const QString& toolTip)
{
    showIn(*m_state, text, toolTip.isEmpty() ? text : toolTip);
}

void MainStatusBar::setHintText(const QString& text)
{
    showIn(*m_hint, text, text);
}

void MainStatusBar::setWriteText(const QString& text, const QString& details)
{
    m_write->setText(platform::visibleText(text));
    m_write->setToolTip(platform::visibleLines(details));
    m_write->setIcon(details.isEmpty() ? QIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning));
    m_write->setAccessibleName(m_write->text());
    m_write->setVisible(!text.isEmpty());
}
