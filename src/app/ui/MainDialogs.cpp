#include "MainDialogs.h"

#include "ProgramContext.h"
#include "frmOption.h"
#include "frmShowVersion.h"
#include "frmTraffic.h"

MainDialogs::MainDialogs(ProgramContext& program, QWidget& window, std::function<bool()> mayReload)
    : m_program(program), m_window(window), m_mayReload(std::move(mayReload))
{}

MainDialogs::~MainDialogs() = default;

void MainDialogs::showOption()
{
    if (m_option == nullptr) {
        m_option = std::make_unique<frmOption>(m_program.library(), m_program.settings());
        m_option->setMayReload(m_mayReload);
        connect(m_option.get(), &frmOption::designChanged, this, &MainDialogs::designChanged);
        connect(m_option.get(), &frmOption::stored, this, &MainDialogs::optionsStored);
    }
    m_option->Logs(m_program.errorLog(), m_program.traceLog());
    m_option->showModeless(&m_window, true);
}

void MainDialogs::showVersion()
{
    if (m_version == nullptr)
        m_version = std::make_unique<frmShowVersion>(m_program.library(), ProgramVersion::current());
    m_version->showModeless(&m_window, true);
}

// A window of its own: it is there while a transfer or the communication settings keep the main one.
void MainDialogs::showTraffic()
{
    if (m_traffic == nullptr)
        m_traffic = std::make_unique<frmTraffic>(m_program.library(), m_program.traceLog().filePath());
    m_traffic->show();
    m_traffic->raise();
    m_traffic->activateWindow();
}

void MainDialogs::translate()
{
    if (m_traffic != nullptr)
        m_traffic->tranForm();
}

void MainDialogs::close()
{
    if (m_traffic != nullptr)
        m_traffic->close();
}
