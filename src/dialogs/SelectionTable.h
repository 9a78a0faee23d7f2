#pragma once

#include "ChoiceTable.h"
#include "GridModel.h"

#include <QString>
#include <QStringList>

#include <vector>

class clsINI;
class clsLibrary;

// A table of "MultiSelect.ini" as a person sees it: one row for each entry, one column for each part of its name. load,
// then the rest; rows are numbered from 1. Texts are in the language in use; keys that the file lacks are added to it.
class SelectionTable
{
public:
    static constexpr int kMaxColumns = 50;

    explicit SelectionTable(const clsLibrary& library) : m_library(library) {}

    // False: there is nothing to select from, and problem says why.
    bool load(const QString& section);
    QString problem() const { return m_problem; }

    QString title() const { return m_title; }
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    void fill(platform::GridModel& grid) const;

    bool isSelectable(int row) const;            // the entry has a value
    int rowOf(const QString& storedValue) const; // the first entry with that value, as a number; 0: none
    // The first row with a part that begins with the text, else one that holds it; 0: none. Neither case nor the width
    // of the characters matters.
    int find(const QString& text) const;

    // What selecting an entry sets; nothing for one without a value.
    std::vector<EntrySetting> settingsOf(int row, const QString& itemTag) const;

private:
    struct Column
    {
        QString header;
        platform::HAlign align = platform::HAlign::Left;
        double width = 0; // average characters
    };

    bool loadTable(const QString& section);
    void loadLook(clsINI& ini, const QString& section);
    Column loadColumn(clsINI& ini, const QString& section, int number);
    double neededWidth(int number) const;
    QString words(const QString& text) const;
    const ChoiceTable::Entry* entry(int row) const;

    const clsLibrary& m_library;
    ChoiceTable m_table;
    QString m_problem;
    QString m_title;
    std::vector<Column> m_columns;
    std::vector<QStringList> m_rows; // the parts of the names as they are shown
    platform::ColorRef m_backColor = 0;
    platform::ColorRef m_foreColor = 0;
};
