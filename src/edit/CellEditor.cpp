#include "CellEditor.h"

#include "Comparison.h"
#include "HeldValue.h"
#include "Tags.h"
#include "clsKX.h"

#include <algorithm>

CellEditor::CellEditor(clsKX& kx, MessagePresenter& messages, CellEditorShell& shell, QObject* parent)
    : EditSession(kx, messages, shell, parent), m_kx(kx), m_interlocks(kx, *this), m_check(*this, m_interlocks),
      m_clicks(*this, m_interlocks, shell)
{}

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
    startEntry(*item, ChangeCause::Kind::Typed);
    if (!m_check.repeats(*item, entered))
        return m_check.check(*item, bCascade, entered);
    m_check.keep(*item);
    return true;
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
    startEntry(*item, ChangeCause::Kind::Chosen);
    if (m_check.repeats(*item, choice))
        m_check.keep(*item);
    else
        m_check.choose(*item, choice);
    return true;
}

bool CellEditor::canRevert(int col, int row) const
{
    const clsData* item = m_kx.getDataByRC(row, col);
    return item != nullptr && canRevert(*item);
}

bool CellEditor::canRevert(const clsData& item) const
{
    return isUnsent(m_kx.data(), item) && heldValue(m_kx.data(), item).has_value();
}

void CellEditor::revert(int col, int row)
{
    if (canRevert(col, row))
        revertAll({m_kx.getDataByRC(row, col)->Key()});
}

void CellEditor::revertAll(const QStringList& tags)
{
    if (isBusy())
        return;
    const Action action(*this);
    for (const QString& tag : tags) {
        clsData* item = m_kx.getDataByTag(tag);
        if (item != nullptr && canRevert(*item))
            revert(*item);
    }
}

void CellEditor::revert(clsData& item)
{
    item.hold(*heldValue(m_kx.data(), item));
    item.Edit = EditState::kRead;
    item.cause = {};
    item.sendMark = SendMark::None;
    m_kx.followUnit(item);
    m_kx.showItem(item);
    logItem(item, QStringLiteral("Revert"));
}

// What is refused may be so because of another one that is refused: they are looked at until no more are.
QStringList CellEditor::enterSet(const QVector<QPair<QString, QString>>& values)
{
    if (isBusy())
        return {};
    const Action action(*this);
    std::vector<std::pair<clsData*, ItemState>> entered;
    for (const auto& [tag, value] : values) {
        clsData* item = m_kx.getDataByTag(tag);
        if (item == nullptr || value.isEmpty() || isSameValue(item->Data(), value) || !m_kx.isWritable(*item))
            continue;
        entered.emplace_back(item, item->state());
        item->hold(value);
        item->setKnown(true);
        item->Edit = EditState::kChanged;
        item->cause = {ChangeCause::Kind::Loaded, {}};
        m_kx.followUnit(*item);
        keepCause(*item);
    }
    QStringList refused;
    const auto isRefused = [](const auto& entry) { return !entry.first->isAllowed(); };
    for (auto it = std::find_if(entered.begin(), entered.end(), isRefused); it != entered.end();
         it = std::find_if(entered.begin(), entered.end(), isRefused)) {
        refused << it->first->Key();
        it->first->restore(it->second);
        m_kx.followUnit(*it->first);
        entered.erase(it);
    }
    m_kx.refreshSpread(false, nullptr);
    return refused;
}

void CellEditor::setVData(const QString& sTag, const QString& VData, bool bCheck)
{
    clsData* item = m_kx.getDataByTag(sTag);
    if (item == nullptr)
        return;
    const Action action(*this);
    const ItemState before = item->state();
    item->setVData(VData);
    showChanged(*item);
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
    if (item->Key() == tags::kUnit)
        m_interlocks.switchUnit(*item);
    showChanged(*item);
    if (bCheck && !checkAsSet(*item))
        putBack(*item, before);
    if (item->Key() == tags::kInputRange)
        noteRange();
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
void CellEditor::setEntry(const std::vector<EntrySetting>& settings)
{
    const Action action(*this);
    for (const EntrySetting& setting : settings) {
        const clsData* item = m_kx.getDataByTag(setting.tag);
        if (item != nullptr && !m_beforeEntry.contains(item))
            m_beforeEntry.insert(item, item->state());
    }
    setEach(settings, false);
    setEach(settings, true);
    for (const EntrySetting& setting : settings) {
        if (clsData* item = m_kx.getDataByTag(setting.tag))
            unmarkRepeated(*item, m_beforeEntry.value(item));
    }
    m_beforeEntry.clear();
}

// The same entry chosen again changes nothing.
void CellEditor::unmarkRepeated(clsData& item, const ItemState& before)
{
    if (!before.known || before.holdsDefault || before.data != item.Data())
        return;
    item.Edit = before.edit;
    item.cause = before.cause;
    m_kx.showItem(item);
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
    m_kx.showItem(item);
}

void CellEditor::setLimits(const QString& tag, const QString& lower, const QString& upper)
{
    clsData* item = m_kx.getDataByTag(tag);
    if (item == nullptr)
        return;
    item->setLimitL(lower);
    item->setLimitH(upper);
    noteLimits(*item);
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
