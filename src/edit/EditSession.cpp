#include "EditSession.h"

#include "EntryOrder.h"
#include "ItemLimits.h"
#include "Log.h"
#include "MessagePresenter.h"
#include "Tags.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>

EditSession::EditSession(clsKX& kx, MessagePresenter& messages, CellEditorShell& shell, QObject* parent)
    : QObject(parent), m_kx(kx), m_messages(messages), m_shell(shell), m_history(kx)
{
    // The steps refer to items that a load replaces.
    connect(&kx, &clsKX::LoadEvent, this, [this](int mode) {
        if (mode != 0)
            return;
        m_history.forgetItems();
        m_entered = nullptr;
        m_firstEntered = nullptr;
        clear();
    });
}

void EditSession::beginAction()
{
    if (m_depth++ == 0)
        m_history.begin();
}

void EditSession::endAction()
{
    if (m_depth > 1) {
        --m_depth;
        return;
    }
    // Only now is all set that the controller is to take along with the range.
    if (std::exchange(m_rangeIsDue, false))
        noteSent(m_shell.writeOne(tags::kInputRange));
    noteCauses(m_history.changed());
    showChanges();
    m_history.finish(!m_sent, m_firstEntered);
    if (m_sent)
        m_history.clear();
    m_depth = 0;
    m_redraw = false;
    m_sent = false;
    startEntry();
    m_entered = nullptr;
    m_firstEntered = nullptr;
    m_causedHere.clear();
    Q_EMIT edited();
    Q_EMIT historyChanged();
}

void EditSession::startEntry(clsData& item, ChangeCause::Kind kind)
{
    startEntry();
    m_entered = &item;
    if (m_firstEntered == nullptr)
        m_firstEntered = &item;
    m_enteredBy = m_isPasting ? ChangeCause::Kind::Pasted : kind;
}

ChangeCause EditSession::causeOf(const clsData& item) const
{
    if (m_entered == nullptr)
        return {};
    return &item == m_entered ? ChangeCause{m_enteredBy, {}}
                              : ChangeCause{ChangeCause::Kind::Followed, m_entered->Key()};
}

void EditSession::showChanged(clsData& item)
{
    item.cause = causeOf(item);
    m_causedHere.insert(&item);
    m_kx.refreshCell(item);
}

// A choice from a table sets items without a cell besides.
void EditSession::noteCauses(const std::vector<clsData*>& changed)
{
    for (clsData* item : changed) {
        if (!m_causedHere.contains(item))
            item->cause = causeOf(*item);
    }
}

bool EditSession::decidesDisplay(const std::vector<clsData*>& changed)
{
    return m_redraw ||
           std::any_of(changed.begin(), changed.end(), [this](auto* item) { return changesDisplay(*item); });
}

void EditSession::showChanges()
{
    const auto changed = m_history.changed();
    if (decidesDisplay(changed))
        m_kx.refreshSpread(false, nullptr);
    else
        showLimited(changed);
}

// How a changed value is shown depends on its limits.
void EditSession::showLimited(const std::vector<clsData*>& changed)
{
    const auto hasChanged = [&](const QString& tag) {
        return std::find(changed.begin(), changed.end(), m_kx.getDataByTag(tag)) != changed.end();
    };
    for (const auto& item : m_kx.items()) {
        if (item->Edit != EditState::kChanged || !item->Visible())
            continue;
        const QStringList sources = limitSources(*item);
        if (std::any_of(sources.begin(), sources.end(), hasChanged))
            m_kx.showItem(*item);
    }
}

// Values that are sent are marked as changed no longer.
void EditSession::noteSent(bool sent)
{
    m_sent = m_sent || sent;
    m_redraw = m_redraw || sent;
}

bool EditSession::changesDisplay(const clsData& changed)
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

bool EditSession::isOpen(const clsData& item) const
{
    if (!item.Visible() || m_kx.spread() == nullptr)
        return false;
    const platform::Cell& cell = m_kx.spread()->cell(item.Row(), item.Col());
    return !cell.locked && !cell.readOnly;
}

void EditSession::undo()
{
    if (m_depth > 0 || isBusy())
        return;
    showRestored(m_history.undo());
}

void EditSession::redo()
{
    if (m_depth > 0 || isBusy())
        return;
    showRestored(m_history.redo());
}

void EditSession::showRestored(const clsData* item)
{
    if (item != nullptr)
        Q_EMIT restored(item->Col(), item->Row());
    Q_EMIT edited();
    Q_EMIT historyChanged();
}

// Also inside an action that reads or writes: its step goes too, what it has changed is still shown at its end.
void EditSession::clear()
{
    m_history.clear();
    m_sent = m_depth > 0;
    startEntry();
    m_decimalsSources.clear();
    m_sourcesKnown = false;
    Q_EMIT historyChanged();
}

int EditSession::notify(const QString& text, int style, const QString& title)
{
    if (m_silence == 0)
        return m_messages.showMessage(text, style, title);
    m_unsaid << text;
    return MessageResult::kOk;
}

void EditSession::logItem(const clsData& item, const QString& word) const
{
    logEvent(QStringLiteral("%1[%2-%3]=").arg(item.Key()).arg(item.Col()).arg(item.Row()) + item.Data() + word);
}

void EditSession::logEvent(const QString& line) const
{
    m_kx.library().context().eventLog.get().LogWrite(line);
}
