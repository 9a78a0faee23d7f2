#include "CellClipboard.h"

#include "CellEditor.h"
#include "CellHint.h"
#include "EntryOrder.h"
#include "ItemDisplay.h"
#include "MessagePresenter.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <algorithm>
#include <utility>
#include <vector>

using platform::CellRange;
using platform::CellType;

namespace {

constexpr int kLongestText = 40; // of a refused value, in the message

} // namespace

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
    if (!open.isEmpty())
        report(open);
    return static_cast<int>(open.size());
}

void CellClipboard::report(const QVector<Entry>& refused)
{
    const auto tran = m_editor.model().library().translation();
    QStringList lines{tran(QStringLiteral("%1 of the pasted values were not accepted:")).arg(refused.size())};
    for (const Entry& entry : refused.first(std::min<qsizetype>(refused.size(), kMaxNamed)))
        lines << entry.refusal;
    if (refused.size() > kMaxNamed)
        lines << tran(QStringLiteral("and %1 more")).arg(refused.size() - kMaxNamed);
    m_editor.notify(lines.join(u'\n'), MessageStyle::kInformation);
}

QString CellClipboard::refusalOf(const Entry& entry, const QStringList& unsaid) const
{
    const clsKX& kx = m_editor.model();
    const auto tran = kx.library().translation();
    const clsData& item = *kx.getDataByRC(entry.row, entry.col);
    const platform::Cell& cell = kx.spread()->cell(entry.row, entry.col);
    const QString text = entry.text.size() > kLongestText ? entry.text.left(kLongestText) + u'…' : entry.text;
    const QString subject = QStringLiteral("%1 \"%2\"").arg(nameWithTag(item, tran), text);
    if (const QString closed = closedHint(kx, item, subject, tran); !closed.isEmpty())
        return closed;
    const QString line = tran(QStringLiteral("%1: %2"));
    if (cell.type == CellType::ComboBox)
        return line.arg(subject, tran(QStringLiteral("no choice of its list")));
    if (cell.type != CellType::Edit)
        return line.arg(subject, tran(QStringLiteral("buttons and tables accept no pasted text")));
    return line.arg(subject, unsaid.value(0));
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
        QVector<Entry> refused;
        for (Entry& entry : open) {
            if (!enter(entry))
                refused << entry;
        }
        open = refused;
    }
}

bool CellClipboard::enter(Entry& entry)
{
    const clsKX& kx = m_editor.model();
    if (kx.getDataByRC(entry.row, entry.col) == nullptr)
        return true;
    const platform::Cell cell = kx.spread()->cell(entry.row, entry.col);
    if (cell.text == entry.text)
        return true;
    const CellEditor::Silence silence(m_editor);
    const bool taken = cell.type == CellType::ComboBox
                           ? choose(entry, cell.comboList)
                           : cell.type == CellType::Edit && m_editor.checkCell(entry.col, entry.row, true, entry.text);
    if (!taken)
        entry.refusal = refusalOf(entry, silence.unsaid());
    return taken;
}

bool CellClipboard::choose(const Entry& entry, const QStringList& choices)
{
    const auto choice = choices.indexOf(entry.text);
    return choice >= 0 && m_editor.changeCombo(entry.col, entry.row, static_cast<int>(choice));
}
