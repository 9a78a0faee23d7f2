#include "CellClipboard.h"

#include "CellEditor.h"
#include "EntryOrder.h"
#include "MessagePresenter.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <utility>
#include <vector>

using platform::CellRange;
using platform::CellType;

QString CellClipboard::copy(const CellRange& range) const
{
    const platform::GridModel* grid = m_editor.model().spread();
    if (grid == nullptr)
        return {};
    QStringList lines;
    for (int row = range.row; row <= range.row2; ++row) {
        QStringList cells;
        for (int col = range.col; col <= range.col2; ++col)
            cells << grid->cell(row, col).text.simplified();
        lines << cells.join(u'\t');
    }
    return lines.join(u'\n');
}

QVector<CellClipboard::Entry> CellClipboard::entries(const CellRange& range, const QString& text) const
{
    QString plain = text;
    plain.remove(u'\r');
    if (plain.endsWith(u'\n'))
        plain.chop(1);
    QVector<Entry> list;
    const QStringList lines = plain.split(u'\n');
    if (lines.size() == 1 && !plain.contains(u'\t')) {
        for (int row = range.row; row <= range.row2; ++row) {
            for (int col = range.col; col <= range.col2 && list.size() < kMaxCells; ++col)
                list.append({row, col, plain.trimmed()});
        }
        return list;
    }
    for (int line = 0; line < lines.size(); ++line) {
        const QStringList cells = lines[line].split(u'\t');
        for (int i = 0; i < cells.size() && list.size() < kMaxCells; ++i)
            list.append({range.row + line, range.col + i, cells[i].trimmed()});
    }
    return list;
}

// Values are read in terms of the settings that are pasted with them: these come first, and are shown before the others
// are looked at.
int CellClipboard::paste(const CellRange& range, const QString& text)
{
    if (m_editor.model().spread() == nullptr || text.isEmpty())
        return 0;
    QVector<Entry> open = entries(range, text);
    {
        const CellEditor::Action action(m_editor);
        const CellEditor::Silence silence(m_editor);
        m_editor.setPasting(true);
        QVector<Entry> settings = extractSettings(open);
        enterAll(settings);
        m_editor.showChanges();
        enterAll(open);
        m_editor.setPasting(false);
        open += settings;
    }
    if (!open.isEmpty()) {
        const QString notice = m_editor.model().library().tranStr(
            QStringLiteral("%1 of the pasted values were not taken: they are outside the setting range, or their "
                           "parameters cannot be changed."));
        m_editor.notify(notice.arg(open.size()), MessageStyle::kInformation);
    }
    return static_cast<int>(open.size());
}

// Takes them out of the list, from which cells without a parameter go too; both are in the order to be entered.
QVector<CellClipboard::Entry> CellClipboard::extractSettings(QVector<Entry>& list) const
{
    const QVector<Entry> all = std::exchange(list, {});
    std::vector<const ItemData*> items;
    items.reserve(static_cast<size_t>(all.size()));
    for (const Entry& entry : all)
        items.push_back(m_editor.model().getDataByRC(entry.row, entry.col));
    QVector<Entry> settings;
    for (const size_t place : entryOrder(items)) {
        if (items[place] != nullptr)
            (decidesOthers(*items[place]) ? settings : list).append(all[static_cast<qsizetype>(place)]);
    }
    return settings;
}

// A value may be outside its limits only until another of the pasted ones has moved them: refused ones are tried again
// as long as that helps.
void CellClipboard::enterAll(QVector<Entry>& open)
{
    qsizetype before = open.size() + 1;
    while (!open.isEmpty() && open.size() < before) {
        before = open.size();
        open.removeIf([this](const Entry& entry) { return enter(entry) != Result::Refused; });
    }
}

CellClipboard::Result CellClipboard::enter(const Entry& entry)
{
    const clsKX& kx = m_editor.model();
    const clsData* item = kx.getDataByRC(entry.row, entry.col);
    if (item == nullptr)
        return Result::Nothing;
    const platform::Cell& cell = kx.spread()->cell(entry.row, entry.col);
    if (cell.text == entry.text)
        return Result::Nothing;
    if (cell.type == CellType::ComboBox)
        return choose(entry, cell.comboList);
    if (cell.type != CellType::Edit || !m_editor.checkCell(entry.col, entry.row, true, entry.text))
        return Result::Refused;
    return Result::Taken;
}

CellClipboard::Result CellClipboard::choose(const Entry& entry, const QStringList& choices)
{
    const auto choice = choices.indexOf(entry.text);
    const bool taken = choice >= 0 && m_editor.changeCombo(entry.col, entry.row, static_cast<int>(choice));
    return taken ? Result::Taken : Result::Refused;
}
