#include "StartPage.h"

#include "ControlRegistry.h"
#include "VisibleText.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int kWidestPage = 720;
constexpr int kRowGap = 18;

} // namespace

StartPage::StartPage(QWidget* parent) : QScrollArea(parent), m_text(new QLabel)
{
    setObjectName(QStringLiteral("startPage"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    auto* page = new QWidget;
    auto* centred = new QGridLayout(page);
    auto* ways = new QWidget;
    ways->setMaximumWidth(kWidestPage);
    centred->addWidget(ways, 0, 0, Qt::AlignVCenter);
    auto* grid = new QGridLayout(ways);
    grid->setVerticalSpacing(kRowGap);
    grid->setHorizontalSpacing(kRowGap);
    grid->setColumnStretch(1, 1);
    m_text->setWordWrap(true);
    grid->addWidget(m_text, 0, 0, 1, 2);
    addWay(*grid, 0, "Connect a controller...",
           "Port, line and model of a controller; then all its parameters are read.");
    addWay(*grid, 1, "Open a parameter file...", "Look at a set, or prepare one, without a controller.");
    addWay(*grid, 2, "Try the simulator", "A KX410 that is only simulated on this machine: nothing can be harmed.");
    connect(m_buttons[0], &QPushButton::clicked, this, &StartPage::connectWanted);
    connect(m_buttons[1], &QPushButton::clicked, this, &StartPage::fileWanted);
    connect(m_buttons[2], &QPushButton::clicked, this, &StartPage::simulatorWanted);
    setWidget(page);
    setFocusProxy(m_buttons[0]);
}

void StartPage::addWay(QGridLayout& grid, int way, const char* caption, const char* sentence)
{
    auto* button = new QPushButton(QLatin1String(caption));
    button->setObjectName(QStringLiteral("cmdStart_%1").arg(way));
    button->setAutoDefault(true); // Enter presses it
    auto* label = new QLabel(QLatin1String(sentence));
    label->setWordWrap(true);
    label->setBuddy(button); // it is spoken with the button
    grid.addWidget(button, way + 1, 0);
    grid.addWidget(label, way + 1, 1);
    m_buttons[way] = button;
    m_sentences[way] = label;
}

void StartPage::setText(const QString& text)
{
    m_text->setText(platform::visibleLines(text));
}

void StartPage::registerAt(platform::ControlRegistry& registry) const
{
    for (int way = 0; way < kWays; ++way) {
        registry.add(m_buttons[way], QStringLiteral("cmdStart"), way);
        registry.add(m_sentences[way], QStringLiteral("lblStart"), way);
    }
}
