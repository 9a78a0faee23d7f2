#include "CellClipboard.h"

#include "CellEditor.h"
#include "MessagePresenter.h"
#include "clsKX.h"
#include "clsLibrary.h"

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

// A value may be outside its limits only until another of the pasted ones has moved them: refused ones are tried again
// as long as that helps.
int CellClipboard::paste(const CellRange& range, const QString& text)
{
    if (m_editor.model().spread() == nullptr || text.isEmpty())
        return 0;
    QVector<Entry> open = entries(range, text);
    qsizetype before = open.size() + 1;
    {
        const CellEditor::Action action(m_editor);
        const CellEditor::Silence silence(m_editor);
        while (!open.isEmpty() && open.size() < before) {
            before = open.size();
            open.removeIf([this](const Entry& entry) { return enter(entry) != Result::Refused; });
        }
    }
    if (!open.isEmpty()) {
        const QString notice = m_editor.model().library().tranStr(
            QStringLiteral("%1 of the pasted values were not taken: they are outside the setting range, or their "
                           "parameters cannot be changed."));
        m_editor.tell(notice.arg(open.size()), MessageStyle::kInformation);
    }
    return static_cast<int>(open.size());
}

CellClipboard::Result CellClipboard::enter(const Entry& entry)
{
    clsKX& kx = m_editor.model();
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
