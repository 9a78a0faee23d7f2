#include "ParameterSearch.h"

#include "ItemUnits.h"
#include "clsKX.h"

#include <algorithm>
#include <tuple>
#include <utility>

using platform::CellPlace;

namespace {

auto orderOf(const CellPlace& place)
{
    return std::make_tuple(place.col, place.row);
}

bool isBefore(const CellPlace& a, const CellPlace& b)
{
    return orderOf(a) < orderOf(b);
}

} // namespace

QString foldedText(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded().simplified();
}

void ParameterSearch::reload(Wordings wordings)
{
    m_wordings = std::move(wordings);
    m_entries.clear();
    const ItemUnits units(m_kx.data());
    for (const auto& item : m_kx.items()) {
        if (item->Visible() && m_kx.getDataByRC(item->Row(), item->Col()) == item.get())
            add(*item, units.unitOf(*item));
    }
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry& a, const Entry& b) { return isBefore(a.place, b.place); });
    refresh();
}

void ParameterSearch::add(const clsData& item, const QString& unit)
{
    QStringList texts{item.Key(), item.DataName(), unit};
    if (const clsBlock* block = m_kx.getBlockByNo(item.BlockNo()))
        texts << block->m_sName;
    m_entries.push_back({{item.Row(), item.Col()}, item.Key(), foldedNames(texts), {}, {}});
}

// One in a line, so that a hit lies within one of them.
QString ParameterSearch::foldedNames(const QStringList& texts) const
{
    QStringList names;
    for (const QString& text : texts) {
        for (const QString& name : m_wordings.of(text))
            names << foldedText(name);
    }
    return names.join(u'\n');
}

void ParameterSearch::setText(const QString& text)
{
    m_text = foldedText(text);
    refresh();
}

void ParameterSearch::setScope(SearchScope scope)
{
    m_scope = scope;
    refresh();
}

void ParameterSearch::refresh()
{
    m_hits.clear();
    if (!isActive())
        return;
    for (Entry& entry : m_entries) {
        if (isInScope(entry.place) && holdsText(entry))
            m_hits.push_back(entry.place);
    }
}

bool ParameterSearch::holdsText(Entry& entry) const
{
    if (m_text.isEmpty() || entry.texts.contains(m_text))
        return true;
    const QString& shown = m_kx.spread()->cell(entry.place.row, entry.place.col).text;
    if (entry.shown != shown) {
        entry.shown = shown;
        entry.value = foldedNames({shown});
    }
    return entry.value.contains(m_text);
}

bool ParameterSearch::isInScope(const CellPlace& place) const
{
    const clsData* item = m_kx.getDataByRC(place.row, place.col);
    switch (m_scope) {
    case SearchScope::All:
        break;
    case SearchScope::Changed:
        return item != nullptr && item->Edit == EditState::kChanged;
    case SearchScope::Failed:
        return item != nullptr && item->sendMark != SendMark::None;
    case SearchScope::NotRead:
        return item != nullptr && !item->isKnown();
    }
    return true;
}

int ParameterSearch::numberOf(const CellPlace& place) const
{
    const auto hit = std::find(m_hits.begin(), m_hits.end(), place);
    return hit == m_hits.end() ? 0 : static_cast<int>(hit - m_hits.begin()) + 1;
}

std::optional<CellPlace> ParameterSearch::at(const CellPlace& place) const
{
    return around(std::lower_bound(m_hits.begin(), m_hits.end(), place, isBefore));
}

std::optional<CellPlace> ParameterSearch::after(const CellPlace& place) const
{
    return around(std::upper_bound(m_hits.begin(), m_hits.end(), place, isBefore));
}

std::optional<CellPlace> ParameterSearch::before(const CellPlace& place) const
{
    const auto behind = std::lower_bound(m_hits.begin(), m_hits.end(), place, isBefore);
    return around(std::prev(behind == m_hits.begin() ? m_hits.end() : behind, m_hits.empty() ? 0 : 1));
}

std::optional<CellPlace> ParameterSearch::around(std::vector<CellPlace>::const_iterator hit) const
{
    if (m_hits.empty())
        return std::nullopt;
    return hit == m_hits.end() ? m_hits.front() : *hit;
}

QStringList ParameterSearch::tags() const
{
    QStringList tags;
    for (const Entry& entry : m_entries)
        tags << entry.tag;
    tags.sort();
    return tags;
}

std::optional<CellPlace> ParameterSearch::placeOf(const QString& tag) const
{
    const QString wanted = foldedText(tag);
    std::optional<CellPlace> first;
    for (const Entry& entry : m_entries) {
        const QString known = foldedText(entry.tag);
        if (known == wanted)
            return entry.place;
        if (!first && !wanted.isEmpty() && known.startsWith(wanted))
            first = entry.place;
    }
    return first;
}
