#pragma once

#include "GridModel.h"

#include <QString>
#include <QVector>

class CellEditor;

// Cells of the grid as text for other programs: a line for each row, tab characters between the columns. What is pasted
// is checked cell by cell like an entry and is one user action.
class CellClipboard
{
public:
    static constexpr int kMaxCells = 100000; // of one paste
    static constexpr int kMaxNamed = 10;     // refused values that the message names

    explicit CellClipboard(CellEditor& editor) : m_editor(editor) {}

    QString copy(const platform::CellRange& range) const;

    // Pastes from the range's upper left corner on; a single value fills the whole range. Cells without a parameter are
    // left out. Returns the number of refused cells; one message names the first of them, with text and reason.
    int paste(const platform::CellRange& range, const QString& text);

private:
    struct Entry
    {
        int row;
        int col;
        QString text;
        QString refusal = {}; // why it was not taken, in a line with its name
    };

    QVector<Entry> entries(const platform::CellRange& range, const QString& text) const;
    QVector<Entry> extractSettings(QVector<Entry>& list) const;
    void enterAll(QVector<Entry>& open);
    bool enter(Entry& entry);
    bool choose(const Entry& entry, const QStringList& choices);
    QString refusalOf(const Entry& entry, const QStringList& unsaid) const;
    void report(const QVector<Entry>& refused);

    CellEditor& m_editor;
};
