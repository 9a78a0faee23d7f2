#include "CommSettings.h"

#include "ControllerState.h"
#include "ParameterFiles.h"
#include "ProgramContext.h"
#include "StartArguments.h"
#include "TransferEngine.h"
#include "clsKX.h"
#include "frmComSet.h"

#include <QCoreApplication>

#include <utility>

namespace {

constexpr int kCommCheckMs = 100;

}

CommSettings::CommSettings(const Parts& parts) : m_parts(parts)
{
    m_timer1.setSingleShot(true);
    m_timer1.setInterval(kCommCheckMs);
    connect(&m_timer1, &QTimer::timeout, this, [this] {
        if (!m_parts.program.settings().m_bComm)
            show();
    });
}

void CommSettings::show()
{
    if (m_parts.engine.isBusy())
        return;
    // The read that the settings start may ask for them.
    m_isWanted = m_dialog != nullptr;
    if (m_isWanted)
        return;
    do
        run();
    while (std::exchange(m_isWanted, false) && !m_parts.engine.isClosing());
    Q_EMIT closed();
}

void CommSettings::run()
{
    ProgramContext& program = m_parts.program;
    frmComSet dialog({*this, program.ports(), program.library(),
                      StartArguments::parse(QCoreApplication::arguments().mid(1), true).detection},
                     &m_parts.window);
    m_dialog = &dialog;
    connect(&dialog, &frmComSet::trafficWanted, this, &CommSettings::trafficWanted);
    dialog.Logs(program.errorLog(), program.traceLog());
    dialog.exec();
    m_dialog = nullptr;
}

bool CommSettings::isOpen() const
{
    return m_dialog != nullptr;
}

void CommSettings::close()
{
    if (m_dialog != nullptr)
        m_dialog->close();
}

void CommSettings::noteFilled()
{
    m_wasOffLine = m_parts.program.settings().m_bComm;
}

// What was there before the options changed to on-line or off-line work is no controller's current data.
void CommSettings::doCommCheck()
{
    const bool isOffLine = m_parts.program.settings().m_bComm;
    if (isOffLine != std::exchange(m_wasOffLine, isOffLine)) {
        if (isOffLine && m_parts.kx.holdsDefaults()) // what was read, loaded or entered stays
            m_parts.kx.fillOffLine();
        m_parts.controller.setState(MainState::NoConnection);
    }
    m_timer1.start();
}

int CommSettings::slaveAddress() const
{
    return m_parts.controller.slaveAddress();
}

int CommSettings::transmissionMode() const
{
    return m_parts.controller.transmissionMode();
}

int CommSettings::modelNumber() const
{
    return m_parts.controller.modelNumber();
}

QString CommSettings::currentModel() const
{
    return m_parts.controller.model();
}

bool CommSettings::mayDiscard()
{
    return m_parts.files.mayReplace();
}

void CommSettings::setConfirmed(bool confirmed)
{
    m_parts.controller.setState(confirmed ? MainState::Confirmed : MainState::NoConnection);
}

void CommSettings::takeOver(int slaveNo, int mode, int modelPosition, const QString& modelString)
{
    m_parts.controller.setLine(slaveNo, mode);
    Q_EMIT modelChosen(modelPosition < 0 ? m_parts.controller.modelNumber() : modelPosition + 1, modelString);
}
