#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class clsINI;
class clsLibrary;

// What a choice sets of one item: its stored value, or what it shows.
struct EntrySetting
{
    QString tag;
    QString value;
    bool isDisplayValue = false;
    bool operator==(const EntrySetting&) const = default;
};

// A selection table, one section of "MultiSelect.ini": entries whose data element with index 1 identifies them and
// whose name element with index 0 is shown. The table ends before the first entry named "Test".
class ChoiceTable
{
public:
    static constexpr int kMaxEntries = 50;

    struct Entry
    {
        int dataCount = 50;
        QStringList tags;
        QStringList data;
        QStringList names;

        // Empty: the entry has no value to be taken.
        QString value() const { return data.value(1).trimmed(); }
        // What the tag list sets, from this position on; elements that name no item set nothing.
        std::vector<EntrySetting> settings(qsizetype from) const;
        // What taking the entry for an item sets, in this order: the item itself, then its tag list.
        std::vector<EntrySetting> settingsFor(const QString& itemTag) const;
    };

    // An empty section name gives an empty table.
    void load(clsINI& ini, const QString& section, const clsLibrary& library);

    const std::vector<Entry>& entries() const { return m_entries; }

    // The name of the first entry whose identifying element equals the stored value as a number; empty when none does.
    QString nameOf(const QString& storedValue) const;

private:
    std::vector<Entry> m_entries;
};
