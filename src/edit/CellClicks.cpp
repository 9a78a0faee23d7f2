#include "CellClicks.h"

#include "Comparison.h"
#include "EditSession.h"
#include "Interlocks.h"
#include "MessagePresenter.h"
#include "Tags.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

constexpr int kYesNoCritical = MessageStyle::kYesNo + MessageStyle::kCritical;

} // namespace

CellClicks::CellClicks(EditSession& session, Interlocks& interlocks, CellEditorShell& shell)
    : m_session(session), m_interlocks(interlocks), m_shell(shell), m_kx(session.model())
{}

QString CellClicks::translated(const char* text) const
{
    return m_kx.library().tranStr(QString::fromLatin1(text));
}

bool CellClicks::isUpToDate()
{
    if (m_kx.isOffLine() || m_shell.state() == MainState::UpToDate)
        return true;
    m_session.notify(translated("Please acquire the up-to-date data from the equipment."), MessageStyle::kCritical);
    return false;
}

bool CellClicks::confirm(bool isAsked)
{
    return !isAsked ||
           m_session.notify(translated("This Parameter change sure?"), kYesNoCritical) != MessageResult::kNo;
}

void CellClicks::clickCell(int col, int row)
{
    if (m_shell.isBusy() || !isUpToDate())
        return;
    clsData* item = m_kx.getDataByRC(row, col);
    const EditSession::Action action(m_session);
    if (item != nullptr)
        clickItem(*item, col, row);
    else
        clickBlock(m_kx.getBlockByRC(row, col), col, row, true);
}

void CellClicks::clickItem(clsData& item, int col, int row)
{
    if (!m_session.isOpen(item))
        return;
    m_session.logItem(item, QStringLiteral("Click"));
    const ProgramOptions& settings = m_kx.library().context().settings;
    const bool isUnit = item.Key() == tags::kUnit;
    if (!confirm(isUnit && settings.m_bViewUnitConf))
        return;
    if (item.CellType() == platform::CellType::Button)
        switchBit(item);
    if (isUnit)
        writeUnit(item, col, row);
    else
        clickBlock(m_kx.getBlockByRC(row, col), col, row, false);
}

void CellClicks::switchBit(clsData& item)
{
    const bool isOn = compareNumbers(item.Data(), QStringLiteral("="), QString::number(item.BitOn()));
    m_session.startEntry(item, ChangeCause::Kind::Chosen);
    item.setData(QString::number(isOn ? item.BitOff() : item.BitOn()));
    m_session.showChanged(item);
}

// Every temperature of the controller depends on the unit: it goes out at once, with the input range behind it, which
// puts it in force. Off-line the range is chosen again from the table of the new unit.
void CellClicks::writeUnit(const clsData& item, int col, int row)
{
    m_interlocks.switchUnit(item);
    if (m_kx.isOffLine()) {
        if (const clsData* range = m_kx.getDataByTag(tags::kInputRange))
            openSelect(range->Col(), range->Row());
        return;
    }
    clsBlock* block = m_kx.getBlockByNo(item.BlockNo());
    logBlock(block, col, row);
    m_session.noteSent(m_shell.writeBlockThenOne(block, tags::kInputRange));
}

void CellClicks::logBlock(const clsBlock* block, int col, int row) const
{
    if (block != nullptr)
        m_session.logEvent(
            QStringLiteral("%1[%2-%3]=%4BlockClick").arg(block->m_sName).arg(col).arg(row).arg(block->m_lNo));
}

void CellClicks::clickBlock(clsBlock* block, int col, int row, bool readBack)
{
    if (block == nullptr)
        return;
    logBlock(block, col, row);
    if (m_kx.spread() != nullptr && m_kx.getDataByRC(row, col) == nullptr)
        m_kx.spread()->setValue(row, col, 0);
    m_session.noteSent(m_shell.writeBlock(*block, readBack));
}

void CellClicks::writeItem(int col, int row)
{
    const clsData* item = m_kx.getDataByRC(row, col);
    if (item == nullptr || m_shell.isBusy() || !isUpToDate())
        return;
    const EditSession::Action action(m_session);
    m_session.logItem(*item, QStringLiteral("Write"));
    m_session.noteSent(m_shell.writeOne(item->Key()));
}

void CellClicks::writeBlockOf(int col, int row)
{
    const clsData* item = m_kx.getDataByRC(row, col);
    if (item == nullptr || m_shell.isBusy() || !isUpToDate())
        return;
    const EditSession::Action action(m_session);
    clickBlock(m_kx.getBlockByNo(item->BlockNo()), col, row, true);
}

void CellClicks::openSelect(int col, int row)
{
    clsData* item = m_kx.getDataByRC(row, col);
    if (item == nullptr || !item->checkMulti() || !m_session.isOpen(*item) || m_shell.isBusy() || !isUpToDate())
        return;
    const EditSession::Action action(m_session);
    m_session.startEntry(*item, ChangeCause::Kind::Chosen);
    if (item->doMultiSelect()) {
        m_session.logItem(*item, QStringLiteral("MultiSelectOpen"));
        m_shell.openMultiSelect(*item, item->Section());
    } else if (item->doInputSelect()) {
        openInput(*item);
    }
}

void CellClicks::openInput(clsData& item)
{
    const clsData* unit = m_kx.getDataByTag(tags::kUnit);
    const QString value = unit == nullptr ? QStringLiteral("0") : unit->Data();
    const bool isCelsius = compareNumbers(value, QStringLiteral("="), QStringLiteral("0"));
    if (!isCelsius && !compareNumbers(value, QStringLiteral("="), QStringLiteral("1")))
        return;
    if (!confirm(m_kx.library().context().settings.get().m_bViewInputConf))
        return;
    m_session.logItem(item, isCelsius ? QStringLiteral("InputSelectCOpen") : QStringLiteral("InputSelectKOpen"));
    m_shell.openMultiSelect(item, isCelsius ? item.ICSection() : item.IKSection());
}
