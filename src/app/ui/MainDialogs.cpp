#include "MainDialogs.h"

#include "ProgramContext.h"
#include "clsKX.h"
#include "frmBackups.h"
#include "frmHistory.h"
#include "frmOption.h"
#include "frmShowVersion.h"
#include "frmTraffic.h"

namespace {

void bringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

MainDialogs::MainDialogs(Parts parts) : m_parts(std::move(parts)), m_journal(m_parts.program.context()) {}

MainDialogs::~MainDialogs() = default;

void MainDialogs::showOption()
{
    if (m_option == nullptr) {
        m_option = std::make_unique<frmOption>(m_parts.program.library(), m_parts.program.settings());
        m_option->setMayReload(m_parts.mayReload);
        connect(m_option.get(), &frmOption::designChanged, this, &MainDialogs::designChanged);
        connect(m_option.get(), &frmOption::stored, this, &MainDialogs::optionsStored);
    }
    m_option->Logs(m_parts.program.errorLog(), m_parts.program.traceLog());
    m_option->showModeless(&m_parts.window, true);
}

void MainDialogs::showVersion()
{
    if (m_version == nullptr)
        m_version = std::make_unique<frmShowVersion>(m_parts.program.library(), ProgramVersion::current());
    m_version->showModeless(&m_parts.window, true);
}

// A window of its own: it is there while a transfer or the communication settings keep the main one.
void MainDialogs::showTraffic()
{
    if (m_traffic == nullptr) {
        m_traffic = std::make_unique<frmTraffic>(m_parts.program.library(), m_parts.program.traceLog().filePath());
        m_traffic->setDevice(m_parts.device);
        m_traffic->setStatistics(m_parts.statistics);
        m_traffic->setNames(m_parts.parameters);
    }
    bringUp(*m_traffic);
}

void MainDialogs::showHistory()
{
    if (m_history == nullptr)
        m_history = std::make_unique<frmHistory>(m_parts.program.library(), m_journal);
    bringUp(*m_history);
}

void MainDialogs::showBackups()
{
    if (m_backups == nullptr)
        m_backups = std::make_unique<frmBackups>(m_parts.kx, m_parts.loadBackup);
    bringUp(*m_backups);
}

void MainDialogs::setBusy(bool busy)
{
    if (m_backups != nullptr)
        m_backups->setEnabled(!busy);
}

void MainDialogs::refresh()
{
    if (m_backups != nullptr)
        m_backups->refresh();
}

void MainDialogs::translate()
{
    if (m_traffic != nullptr)
        m_traffic->tranForm();
    if (m_history != nullptr)
        m_history->tranForm();
    if (m_backups != nullptr)
        m_backups->tranForm();
}

void MainDialogs::close()
{
    for (QWidget* window : std::initializer_list<QWidget*>{m_traffic.get(), m_history.get(), m_backups.get()}) {
        if (window != nullptr)
            window->close();
    }
}
