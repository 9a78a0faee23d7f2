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

    explicit CellClipboard(CellEditor& editor) : m_editor(editor) {}

    QString copy(const platform::CellRange& range) const;

    // Pastes from the range's upper left corner on; a single value fills the whole range. Cells without a parameter are
    // left out. Returns the number of refused cells, which are reported in one message.
    int paste(const platform::CellRange& range, const QString& text);

private:
    enum class Result { Taken, Refused, Nothing };
    struct Entry
    {
        int row;
        int col;
        QString text;
    };

    QVector<Entry> entries(const platform::CellRange& range, const QString& text) const;
    QVector<Entry> extractSettings(QVector<Entry>& list) const;
    void enterAll(QVector<Entry>& open);
    Result enter(const Entry& entry);
    Result choose(const Entry& entry, const QStringList& choices);

    CellEditor& m_editor;
};
