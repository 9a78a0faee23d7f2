#include "frmShowVersion.h"

#include "ControlRegistry.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QGuiApplication>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

frmShowVersion::frmShowVersion(const clsLibrary& library, const ProgramVersion& version)
    : m_library(library), m_version(version), m_placement(*this, QStringLiteral("frmShowVersion"))
{
    setupForm();
    m_registry = std::make_unique<platform::ControlRegistry>(*this, QStringLiteral("frmShowVersion"));
    m_registry->add(m_title, QStringLiteral("lblTitle"));
    m_registry->add(m_text, QStringLiteral("lblVersion"));
    m_registry->add(m_exit, QStringLiteral("cmdExit"));
    m_registry->add(m_licence, QStringLiteral("lblLicence"));
    connect(m_exit, &QPushButton::clicked, this, &frmShowVersion::reject);
}

frmShowVersion::~frmShowVersion() = default;

void frmShowVersion::setupForm()
{
    setObjectName(QStringLiteral("frmShowVersion"));
    setWindowTitle(QStringLiteral("Version"));
    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("lblTitle"));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_text = new QLabel(this);
    m_text->setObjectName(QStringLiteral("lblVersion"));
    m_licence =
        new QLabel(QStringLiteral("Copyright 2026 Vorlant maintainers. Free software under the GNU General Public "
                                  "License, version 3 or later; there is no warranty."),
                   this);
    m_licence->setObjectName(QStringLiteral("lblLicence"));
    m_licence->setWordWrap(true);
    m_exit = new QPushButton(QStringLiteral("&Close"), this);
    m_exit->setObjectName(QStringLiteral("cmdExit"));
    m_exit->setDefault(true);
    for (QLabel* label : {m_title, m_text, m_licence}) {
        label->setAlignment(Qt::AlignCenter);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    auto* layout = new QVBoxLayout(this);
    // Room around the few words, whatever their font.
    const int space = fontMetrics().height();
    layout->setContentsMargins(4 * space, space, 4 * space, space);
    layout->setSpacing(space / 2);
    layout->addStretch();
    layout->addWidget(m_title);
    layout->addWidget(m_text);
    layout->addWidget(m_licence);
    layout->addSpacing(space / 2);
    layout->addStretch();
    layout->addWidget(m_exit, 0, Qt::AlignHCenter);
}

void frmShowVersion::showModeless(QWidget* frmOwner, bool bModal)
{
    m_owner.attach(*this, frmOwner, bModal);
    setModal(m_library.toModalVal(bModal) != 0);
    loadForm();
    show();
    m_exit->setFocus();
}

void frmShowVersion::loadForm()
{
    m_library.tranForm(*m_registry);
    setWindowTitle(platform::visibleText(m_library.tranStr(QStringLiteral("VersionInfo"))));
    m_title->setText(platform::visibleLines(m_library.tranStr(m_library.context().machine.folders.baseName())));
    m_text->setText(platform::visibleLines(m_version.text(m_library)));
    adjustSize();
    centre();
    m_library.loadFormSize(m_placement); // a stored place goes before the middle of the screen
}

void frmShowVersion::centre()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.left() + (screen.width() - width()) / 2, screen.top() + (screen.height() - height()) / 2);
}

// Hidden by whatever way; a minimised dialog is still open.
void frmShowVersion::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_owner.release();
        m_library.saveFormSize(m_placement);
    }
    QDialog::hideEvent(event);
}
