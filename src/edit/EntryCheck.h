#pragma once

#include "ItemLimits.h"

#include <QString>
#include <QVector>

class EditSession;
class Interlocks;
class clsData;
class clsKX;

// One entry: the value is held against the limits, taken or put back, marked, logged, and the interlocks follow, which
// come back here for what they set. What it is given is kept; the cell editor owns it.
class EntryCheck
{
public:
    EntryCheck(EditSession& session, Interlocks& interlocks);

    // False: refused; the cell shows the value before.
    bool check(clsData& item, bool bCascade, const QString& entered);
    void choose(clsData& item, int choice); // of a combo box, 0-based

    // The entry is the value that the item holds already.
    bool repeats(const clsData& item, const QString& entered) const;
    bool repeats(const clsData& item, int choice) const;
    void keep(const clsData& item); // logs such an entry and shows the value as it was

    void setComboDropped(bool dropped) { m_dropped = dropped; }
    bool isComboDropped() const { return m_dropped; }

    int shownChoice(const clsData& item) const;
    QString shownText(const clsData& item) const;

private:
    bool checkOnce(clsData& item, bool bCascade, const QString& entered);
    bool checkNumber(clsData& item, bool bCascade, const QString& entered);
    void report(const clsData& item, EntryRefusal refusal, const LimitRange& limits, const QString& number);

    EditSession& m_session;
    Interlocks& m_interlocks;
    clsKX& m_kx;
    bool m_dropped = false;
    QVector<const clsData*> m_checking; // the cascade, outermost first
};
