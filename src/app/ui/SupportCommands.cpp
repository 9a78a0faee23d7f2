#include "SupportCommands.h"

#include "Diagnostics.h"
#include "MainMenus.h"
#include "MessagePresenter.h"
#include "ProgramContext.h"
#include "SettingsReset.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QStatusBar>

namespace {

constexpr int kToldMs = 5000;

}

SupportCommands::SupportCommands(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    connect(parts.menus.diagnostics, &QAction::triggered, this, &SupportCommands::copyDiagnostics);
    connect(parts.menus.reset, &QAction::triggered, this, &SupportCommands::resetSettings);
}

void SupportCommands::copyDiagnostics()
{
    const QString home = QDir::homePath();
    QGuiApplication::clipboard()->setText(
        diagnosticsText(m_parts.program, QGuiApplication::platformName(), home == QDir::rootPath() ? QString() : home));
    m_parts.statusBar.showMessage(
        m_parts.program.library().tranStr(QStringLiteral("The diagnostics are on the clipboard.")), kToldMs);
}

void SupportCommands::resetSettings()
{
    const clsLibrary& library = m_parts.program.library();
    const QString question = library.tranStr(
        QStringLiteral("All settings get their defaults at the next start. What they are now is kept in a file beside "
                       "them; logs, backups and history stay. Go on?"));
    if (m_parts.questions.showMessage(question, MessageStyle::kYesNoExclamation + MessageStyle::kSecondIsDefault) !=
        MessageResult::kYes)
        return;
    const platform::Result<QString> copy = ::resetSettings(m_parts.program);
    if (copy.ok())
        m_parts.questions.showMessage(
            library
                .tranStr(QStringLiteral("The settings have their defaults at the next start. The old ones are in "
                                        "%1."))
                .arg(copy.value()),
            MessageStyle::kInformation);
    else
        m_parts.questions.showMessage(
            library.tranStr(QStringLiteral("The settings were not reset: %1")).arg(copy.error()),
            MessageStyle::kCritical);
}
