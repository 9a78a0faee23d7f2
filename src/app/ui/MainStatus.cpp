#include "MainStatus.h"

#include "CellHint.h"
#include "LinkStatus.h"
#include "MainStatusBar.h"
#include "ProgramContext.h"
#include "ReadStatus.h"
#include "TransferEngine.h"
#include "WriteStatus.h"
#include "uclComm.h"
#include "vaSpread.h"

MainStatus::MainStatus(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    connect(&m_parts.controller, &ControllerState::changed, this, [this] {
        m_parts.bar.setModelText(m_parts.controller.model());
        showLink();
        showData();
    });
    connect(&m_parts.engine, &TransferEngine::activityChanged, this, [this] {
        showLink();
        showData();
    });
    connect(&m_parts.engine, &TransferEngine::readEnded, this, [this] {
        if (m_parts.engine.lastRead().refreshed)
            m_readAt = m_parts.program.clock().now();
        showAll();
    });
    connect(&m_parts.engine, &TransferEngine::written, this, [this] {
        m_writtenAt = m_parts.program.clock().now();
        showAll();
    });
    connect(&m_parts.grid, &platform::vaSpread::currentCellChanged, this, &MainStatus::showHint);
}

void MainStatus::showAll()
{
    showWrite();
    showLink();
    showData();
    showHint();
}

void MainStatus::showLink()
{
    const uclComm& link = m_parts.link;
    m_parts.bar.setLinkText(
        linkStatusText({m_parts.program.settings().m_bComm, m_parts.program.settings().neverWrites(), link.State() != 0,
                        link.Port(), link.device(), link.Speed(), link.Chara(), m_parts.controller.transmissionMode(),
                        m_parts.controller.slaveAddress(), link.errorText(), link.isDeferred(),
                        m_watch == LinkWatch::State::Lost, m_watch == LinkWatch::State::Back, link.hasStandIn()},
                       m_parts.program.library().translation()));
}

void MainStatus::setWatch(LinkWatch::State state)
{
    m_watch = state;
    showLink();
}

void MainStatus::showData()
{
    const MainState state = m_parts.controller.state();
    const ReadStatus status{state,
                            m_parts.engine.activity(),
                            m_parts.program.settings().m_bComm,
                            m_parts.kx.holdsDefaults(),
                            countUnread(m_parts.kx),
                            m_readAt,
                            m_parts.engine.lastRead()};
    // Before a read the cells hold the definition's defaults, which must not be taken for the controller's values.
    m_parts.grid.setPale(state != MainState::UpToDate);
    const TranslateText tran = m_parts.program.library().translation();
    m_parts.bar.setStateText(readStatusText(status, tran), readStatusToolTip(status, tran));
}

void MainStatus::showHint()
{
    const QModelIndex at = m_parts.grid.currentIndex();
    const TranslateText tran = m_parts.program.library().translation();
    m_parts.bar.setHintText(at.isValid() ? cellHint(m_parts.kx, at.column() + 1, at.row() + 1, tran) : QString());
}

void MainStatus::showWrite()
{
    const TranslateText tran = m_parts.program.library().translation();
    m_parts.bar.setWriteText(writeStatusText(m_parts.engine.lastWrite(), m_writtenAt, tran), writeDetails());
}

QString MainStatus::writeDetails() const
{
    return writeStatusDetails(m_parts.engine.lastWrite(), m_parts.kx, m_parts.program.library().translation());
}
