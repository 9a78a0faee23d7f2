#include "SimulatorSession.h"

#include "ControllerState.h"
#include "MessagePresenter.h"
#include "ModelCatalogue.h"
#include "ModelCodes.h"
#include "ParameterFiles.h"
#include "ProgramContext.h"
#include "TransferEngine.h"
#include "uclComm.h"

namespace {

const QString kModelCode = QStringLiteral("KX410");

}

SimulatorSession::SimulatorSession(const Parts& parts, QObject* parent)
    : QObject(parent), m_parts(parts), m_process(SimulatorProcess::installed(), parts.program.clock())
{
    // Queued: both may ask or tell, with events.
    connect(&m_process, &SimulatorProcess::ready, this, &SimulatorSession::connectToIt, Qt::QueuedConnection);
    connect(&m_process, &SimulatorProcess::ended, this, &SimulatorSession::settle, Qt::QueuedConnection);
    connect(&m_parts.engine, &TransferEngine::activityChanged, this, &SimulatorSession::settle, Qt::QueuedConnection);
    connect(
        &m_process, &SimulatorProcess::failed, this,
        [this](const QString& reason) {
            tell(reason.isEmpty() ? m_parts.program.library()
                                        .tranStr(QStringLiteral("no answer within %1 seconds"))
                                        .arg(SimulatorProcess::kAnswerMs / platform::kMsPerSecond)
                                  : reason);
        },
        Qt::QueuedConnection);
}

void SimulatorSession::start()
{
    if (!m_parts.isLineFree())
        return;
    if (m_parts.program.settings().m_bComm)
        m_parts.questions.showMessage(
            m_parts.program.library().tranStr(QStringLiteral(
                "The program works offline and sends nothing: switch that off in the options to try the simulator.")),
            MessageStyle::kExclamation);
    else if (m_process.isReady())
        connectToIt();
    else
        m_process.start({QStringLiteral("--model"), kModelCode, QStringLiteral("--slave"),
                         QString::number(m_parts.controller.slaveAddress()), QStringLiteral("--mode"),
                         m_parts.controller.transmissionMode() == 1 ? QStringLiteral("ascii") : QStringLiteral("rtu")});
}

void SimulatorSession::connectToIt()
{
    // Another window may have been opened meanwhile, also while the question stood.
    const bool goesOn = m_parts.isLineFree() && m_parts.files.mayDiscard() && m_parts.isLineFree();
    if (!goesOn || !m_process.isReady()) {
        if (!m_parts.link.hasStandIn())
            m_process.stop();
        return;
    }
    m_parts.link.setStandIn(m_process.device());
    if (!m_parts.link.openComm()) {
        const QString reason = m_parts.link.errorText();
        m_process.stop();
        restorePort();
        tell(reason);
        return;
    }
    if (!m_before)
        m_before = FileModel{m_parts.controller.modelNumber(), m_parts.controller.model()};
    m_parts.controller.setState(MainState::Confirmed);
    Q_EMIT modelChosen(ModelCatalogue(m_parts.program.library()).numberOf(kModelCode),
                       modelcodes::handPicked(kModelCode));
    m_parts.engine.getDataFromKX(nullptr);
}

void SimulatorSession::leave()
{
    m_before.reset();
    m_process.stop();
}

// Only here: a transfer that is under way must not go on with another controller.
void SimulatorSession::settle()
{
    if (!m_parts.link.hasStandIn() || m_process.isReady() || m_parts.engine.isClosing() || !m_parts.isLineFree())
        return;
    restorePort();
    m_parts.questions.showMessage(
        m_parts.program.library().tranStr(QStringLiteral("The simulator has ended. Choose a controller in the "
                                                         "communication settings, or try the simulator again.")),
        MessageStyle::kExclamation);
}

void SimulatorSession::restorePort()
{
    m_parts.link.setStandIn({});
    m_parts.link.prepareComm();
    m_parts.controller.setState(MainState::NoConnection);
    Q_EMIT ended();
}

LastState SimulatorSession::lastState() const
{
    const ControllerState& now = m_parts.controller;
    const bool isTrial = m_before && now.model() == modelcodes::handPicked(kModelCode);
    return {isTrial ? m_before->number : now.modelNumber(), now.slaveAddress(), now.transmissionMode(),
            isTrial ? m_before->modelString : now.model()};
}

void SimulatorSession::tell(const QString& reason)
{
    const QString text = m_parts.program.library().tranStr(
        QStringLiteral("The simulator does not start: install Vorlant again, so that %1 is there."));
    m_parts.questions.showMessage(text.arg(m_process.program()) + u'\n' + reason, MessageStyle::kCritical);
}
