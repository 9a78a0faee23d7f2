#pragma once

#include <QSet>
#include <QString>
#include <QVector>

class CellEditor;
class Interlocks;
class clsData;
class clsKX;

// One entry: the value is held against the limits, taken or put back, marked, logged, and the interlocks follow, which
// come back here for what they set. Part of the cell editor, which owns it.
class EntryCheck
{
public:
    EntryCheck(CellEditor& editor, Interlocks& interlocks);

    void start() { m_limitsGiven.clear(); } // before each entry of a person
    // False: refused; the cell shows the value before.
    bool check(clsData& item, bool bCascade, const QString& entered);
    void choose(clsData& item, int choice); // of a combo box, 0-based

    // An interlock has given the item limits of its own: they count until the entry is done.
    void noteLimits(const clsData& item) { m_limitsGiven.insert(&item); }
    void setComboDropped(bool dropped) { m_dropped = dropped; }
    bool isComboDropped() const { return m_dropped; }

    int shownChoice(const clsData& item) const;
    QString shownText(const clsData& item) const;

private:
    bool checkOnce(clsData& item, bool bCascade, const QString& entered);
    bool checkNumber(clsData& item, bool bCascade, const QString& entered);
    bool isEquivalent(const clsData& item, const QString& entered) const;

    CellEditor& m_editor;
    Interlocks& m_interlocks;
    clsKX& m_kx;
    bool m_dropped = false;
    QVector<const clsData*> m_checking; // the cascade, outermost first
    QSet<const clsData*> m_limitsGiven;
};
