#pragma once

#include <QSet>
#include <QString>

class ChoiceTable;
class clsData;
class clsKX;

// Carries the choice made for one item over to the items without a cell that belong to it: the input range sets its
// limits and its decimal places, and so on.
class MultiSet
{
public:
    explicit MultiSet(clsKX& owner) : m_owner(owner) {}

    // Applies every entry of the table whose identifying element equals the stored value as a number. An item that is
    // reached again through its own choices is not applied a second time.
    void apply(const clsData& item, const ChoiceTable& table, const QString& storedValue);

private:
    void applyEntry(const QStringList& tags, const QStringList& values);
    void applyOne(const QString& target, const QString& value);

    clsKX& m_owner;
    QSet<const clsData*> m_applied; // in the cascade that runs
};
