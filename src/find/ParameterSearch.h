#pragma once

#include "GridModel.h"
#include "Wordings.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class clsData;
class clsKX;

// Which parameters a search looks at.
enum class SearchScope { All, Changed, Failed, NotRead };

// The text as a search compares it: full-width and half-width characters, letter cases and runs of blanks are the same
// (Unicode normalization form KC).
QString foldedText(const QString& text);

// The parameters with a cell in which a text occurs, in the order of the screen: column by column from the top. Without
// a text these are all of the scope; of the scope All then none.
//
// Order of calls: reload after each load of the model and each change of language, then setText and setScope; refresh
// when cells have changed. The model is kept; it may be reloaded between any two calls.
class ParameterSearch
{
public:
    explicit ParameterSearch(const clsKX& kx) : m_kx(kx) {}

    void reload(Wordings wordings);
    void setText(const QString& text);
    void setScope(SearchScope scope);
    void refresh();

    bool isActive() const { return !m_text.isEmpty() || m_scope != SearchScope::All; } // looks for something
    const std::vector<platform::CellPlace>& hits() const { return m_hits; }
    int numberOf(const platform::CellPlace& place) const; // of the hit, from 1; 0 when it is none

    // The hit at the place or the nearest one behind it, around at the end; nothing when there is no hit.
    std::optional<platform::CellPlace> at(const platform::CellPlace& place) const;
    std::optional<platform::CellPlace> after(const platform::CellPlace& place) const;
    std::optional<platform::CellPlace> before(const platform::CellPlace& place) const;

    QStringList tags() const; // of all parameters with a cell
    // In any width and letter case; of a tag that does not exist the first one that begins so.
    std::optional<platform::CellPlace> placeOf(const QString& tag) const;

private:
    struct Entry
    {
        platform::CellPlace place;
        QString tag;
        QString texts; // folded, one in a line: tag, names, blocks, units
        QString shown; // in the cell
        QString value; // the same, folded, with its names in other languages
    };

    void add(const clsData& item, const QString& unit);
    QString foldedNames(const QStringList& texts) const;
    bool holdsText(Entry& entry) const;
    bool isInScope(const platform::CellPlace& place) const;

    std::optional<platform::CellPlace> around(std::vector<platform::CellPlace>::const_iterator hit) const;

    const clsKX& m_kx;
    Wordings m_wordings;
    std::vector<Entry> m_entries; // in the order of the screen
    QString m_text;               // folded
    SearchScope m_scope = SearchScope::All;
    std::vector<platform::CellPlace> m_hits;
};
