#include "CellEditor.h"

#include "EntryOrder.h"
#include "GridRefresh.h"
#include "ItemLimits.h"
#include "Log.h"
#include "MessagePresenter.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>

namespace {

const QString kRangeTag = QStringLiteral("PQRNO");
const QString kUnitTag = QStringLiteral("SWQCF");

} // namespace

CellEditor::CellEditor(clsKX& kx, MessagePresenter& messages, CellEditorShell& shell, QObject* parent)
    : QObject(parent), m_kx(kx), m_messages(messages), m_shell(shell), m_interlocks(kx, *this),
      m_check(*this, m_interlocks), m_clicks(*this, m_interlocks, shell), m_history(kx)
{
    // The steps refer to items that a load replaces.
    connect(&kx, &clsKX::LoadEvent, this, [this](int mode) {
        if (mode != 0)
            return;
        m_history.forgetItems();
        clear();
    });
}

void CellEditor::beginAction()
{
    if (m_depth++ == 0)
        m_history.begin();
}

void CellEditor::endAction()
{
    if (m_depth > 1) {
        --m_depth;
        return;
    }
    // Only now is all set that the controller is to take along with the range.
    if (std::exchange(m_rangeIsDue, false))
        noteSent(m_shell.writeOne(kRangeTag));
    showChanges();
    m_history.finish(!m_sent);
    if (m_sent)
        m_history.clear();
    m_depth = 0;
    m_redraw = false;
    m_sent = false;
    m_check.start();
    Q_EMIT edited();
    Q_EMIT historyChanged();
}

bool CellEditor::decidesDisplay(const std::vector<const clsData*>& changed)
{
    return m_redraw ||
           std::any_of(changed.begin(), changed.end(), [this](auto* item) { return changesDisplay(*item); });
}

void CellEditor::showChanges()
{
    const auto changed = m_history.changed();
    if (decidesDisplay(changed))
        refreshSpread();
    else
        showLimited(changed);
}

// How a changed value is shown depends on its limits.
void CellEditor::showLimited(const std::vector<const clsData*>& changed)
{
    const auto hasChanged = [&](const QString& tag) {
        return std::find(changed.begin(), changed.end(), m_kx.getDataByTag(tag)) != changed.end();
    };
    for (const auto& item : m_kx.items()) {
        if (item->Edit != EditState::kChanged || !item->Visible())
            continue;
        const QStringList sources = limitSources(*item);
        if (std::any_of(sources.begin(), sources.end(), hasChanged))
            GridRefresh(m_kx).show(*item);
    }
}

// Values that are sent are marked as changed no longer.
void CellEditor::noteSent(bool sent)
{
    m_sent = m_sent || sent;
    m_redraw = m_redraw || sent;
}

bool CellEditor::changesDisplay(const clsData& changed)
{
    if (!m_sourcesKnown) {
        m_sourcesKnown = true;
        for (const auto& item : m_kx.items()) {
            const QString tag = item->decimalsReference();
            if (!tag.isEmpty())
                m_decimalsSources.insert(m_kx.getDataByTag(tag));
        }
    }
    return decidesOthers(changed) || m_decimalsSources.contains(&changed);
}

bool CellEditor::isOpen(const clsData& item) const
{
    if (!item.Visible() || m_kx.spread() == nullptr)
        return false;
    const platform::Cell& cell = m_kx.spread()->cell(item.Row(), item.Col());
    return !cell.locked && !cell.readOnly;
}

bool CellEditor::checkCell(int col, int row, bool bCascade)
{
    const clsData* item = m_kx.getDataByRC(row, col);
    return item != nullptr && checkCell(col, row, bCascade, m_check.shownText(*item));
}

bool CellEditor::checkCell(int col, int row, bool bCascade, const QString& entered)
{
    clsData* item = m_kx.getDataByRC(row, col);
    if (item == nullptr || !isOpen(*item))
        return false;
    const Action action(*this);
    m_check.start();
    return m_check.check(*item, bCascade, entered);
}

bool CellEditor::changeCombo(int col, int row)
{
    const clsData* item = m_kx.getDataByRC(row, col);
    return item != nullptr && changeCombo(col, row, m_check.shownChoice(*item));
}

bool CellEditor::changeCombo(int col, int row, int choice)
{
    clsData* item = m_kx.getDataByRC(row, col);
    if (m_check.isComboDropped() || item == nullptr || item->MType() != ItemType::Combo || !isOpen(*item))
        return false;
    const Action action(*this);
    m_check.start();
    m_check.choose(*item, choice);
    return true;
}

void CellEditor::setVData(const QString& sTag, const QString& VData, bool bCheck)
{
    clsData* item = m_kx.getDataByTag(sTag);
    if (item == nullptr)
        return;
    const Action action(*this);
    const ItemState before = item->state();
    item->setVData(VData);
    m_kx.refreshCell(*item);
    if (bCheck && !checkAsSet(*item))
        putBack(*item, before);
}

void CellEditor::setData(const QString& sTag, const QString& sData, bool bCheck)
{
    clsData* item = m_kx.getDataByTag(sTag);
    if (item == nullptr)
        return;
    const Action action(*this);
    const ItemState before = item->state();
    item->setData(sData);
    item->Edit = EditState::kChanged;
    if (item->Key() == kUnitTag)
        m_interlocks.switchUnit(*item);
    m_kx.refreshCell(*item);
    if (bCheck && !checkAsSet(*item))
        putBack(*item, before);
    m_rangeIsDue = m_rangeIsDue || item->Key() == kRangeTag;
}

void CellEditor::setEach(const std::vector<EntrySetting>& settings, bool bCheck)
{
    for (const EntrySetting& setting : settings) {
        if (setting.isDisplayValue)
            setVData(setting.tag, setting.value, bCheck);
        else
            setData(setting.tag, setting.value, bCheck);
    }
}

// The values depend on each other both ways: all are in place before the first one is checked.
void CellEditor::takeEntry(const std::vector<EntrySetting>& settings)
{
    const Action action(*this);
    for (const EntrySetting& setting : settings) {
        const clsData* item = m_kx.getDataByTag(setting.tag);
        if (item != nullptr && !m_beforeEntry.contains(item))
            m_beforeEntry.insert(item, item->state());
    }
    setEach(settings, false);
    setEach(settings, true);
    m_beforeEntry.clear();
}

// The check of a value that is set already, by the cell that shows it.
bool CellEditor::checkAsSet(const clsData& item)
{
    clsData* shown = item.Visible() ? m_kx.getDataByRC(item.Row(), item.Col()) : nullptr;
    return shown == nullptr || m_check.check(*shown, true, m_check.shownText(*shown));
}

void CellEditor::putBack(clsData& item, const ItemState& before)
{
    item.restore(m_beforeEntry.value(&item, before));
    GridRefresh(m_kx).show(item);
}

void CellEditor::setLimits(const QString& tag, const QString& lower, const QString& upper)
{
    clsData* item = m_kx.getDataByTag(tag);
    if (item == nullptr)
        return;
    item->setLimitL(lower);
    item->setLimitH(upper);
    m_check.noteLimits(*item);
}

int CellEditor::getDataTempMax() const
{
    return m_kx.getDataMax();
}

QString CellEditor::getDataTag(int lIndex) const
{
    return m_kx.getTag(lIndex);
}

QString CellEditor::getDataByTag(const QString& sTag) const
{
    const clsData* item = m_kx.getDataByTag(sTag);
    return item == nullptr ? QString() : item->Data();
}

QString CellEditor::getOptStr(int lIndex) const
{
    return m_kx.getOptStr(lIndex);
}

void CellEditor::refreshSpread()
{
    m_kx.refreshSpread(false, nullptr);
}

void CellEditor::undo()
{
    if (m_depth > 0)
        return;
    m_history.undo();
    Q_EMIT edited();
    Q_EMIT historyChanged();
}

void CellEditor::redo()
{
    if (m_depth > 0)
        return;
    m_history.redo();
    Q_EMIT edited();
    Q_EMIT historyChanged();
}

// Also inside an action that reads or writes: its step goes too, what it has changed is still shown at its end.
void CellEditor::clear()
{
    m_history.clear();
    m_sent = m_depth > 0;
    m_check.start();
    m_decimalsSources.clear();
    m_sourcesKnown = false;
    Q_EMIT historyChanged();
}

int CellEditor::tell(const QString& text, int style, const QString& title)
{
    if (m_silence == 0)
        return m_messages.showMessage(text, style, title);
    m_unsaid << text;
    return MessageResult::kOk;
}

void CellEditor::logItem(const clsData& item, const QString& word) const
{
    logEvent(QStringLiteral("%1[%2-%3]=").arg(item.Key()).arg(item.Col()).arg(item.Row()) + item.Data() + word);
}

void CellEditor::logEvent(const QString& line) const
{
    m_kx.library().context().eventLog.get().LogWrite(line);
}
