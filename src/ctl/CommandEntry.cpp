#include "CommandEntry.h"

#include "MessagePresenter.h"
#include "SelectionTable.h"
#include "clsKX.h"
#include "clsLibrary.h"

CommandEntry::CommandEntry(clsKX& kx) : m_editor(kx, kx.library().context().messages, *this) {}

bool CommandEntry::hasOpenCell(clsData& item)
{
    return m_editor.isOpen(item) && model().getDataByRC(item.Row(), item.Col()) == &item;
}

QString CommandEntry::enterNumber(clsData& item, const QString& text)
{
    const CellEditor::Silence silence(m_editor);
    m_editor.startEntry(item, ChangeCause::Kind::Typed);
    if (!hasOpenCell(item))
        m_editor.setVData(item.Key(), text, false);
    else if (!m_editor.checkCell(item.Col(), item.Row(), true, text))
        return QStringLiteral("it is outside the setting range [ %1 ]")
            .arg(item.limits().text(u' ' + item.Key() + u' '));
    return refusalIn(silence);
}

// What the value sets besides may be refused too.
QString CommandEntry::refusalIn(const CellEditor::Silence& silence)
{
    const QStringList unsaid = silence.unsaid();
    return unsaid.isEmpty() ? QString() : QStringLiteral("what it sets is refused: ") + unsaid.join(u' ');
}

QString CommandEntry::choose(clsData& item, int choice, const QString& stored)
{
    const CellEditor::Silence silence(m_editor);
    m_error.clear();
    m_wanted = stored;
    m_editor.startEntry(item, ChangeCause::Kind::Typed);
    if (!hasOpenCell(item) || item.MType() == ItemType::Bit)
        m_editor.setData(item.Key(), stored, false);
    else if (item.checkMulti())
        m_editor.openSelect(item.Col(), item.Row());
    else
        m_editor.changeCombo(item.Col(), item.Row(), choice);
    return m_error.isEmpty() ? refusalIn(silence) : m_error;
}

void CommandEntry::openMultiSelect(clsData& item, const QString& section)
{
    SelectionTable table(model().library());
    if (!table.load(section)) {
        m_error = table.problem();
        return;
    }
    setEntry(table.settingsOf(table.rowOf(m_wanted), item.Key()));
}

void CommandEntry::setData(const QString& sTag, const QString& sData, bool bCheck)
{
    m_editor.setData(sTag, sData, bCheck);
}

void CommandEntry::setVData(const QString& sTag, const QString& VData, bool bCheck)
{
    m_editor.setVData(sTag, VData, bCheck);
}
