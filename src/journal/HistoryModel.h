#pragma once

#include "HistoryRows.h"
#include "Translator.h"

#include <QAbstractTableModel>
#include <QHash>

// The history as a table, the newest write first. Texts of the journal are shown harmless; captions and the outcomes
// that the program knows are in the language in use.
class HistoryModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { kTime, kOutcome, kName, kHeld, kValue, kTag, kCause, kDevice, kModel, kUser, kColumns };

    explicit HistoryModel(TranslateText tran, QObject* parent = nullptr);

    // entries: the oldest first.
    void load(std::vector<JournalEntry> entries);
    void retranslate(); // after a change of language

    const HistoryRow& row(int number) const { return m_rows[static_cast<size_t>(number)]; }
    // Whether one row comes before another in the ascending order of a column: times by the order of the journal,
    // numbers by their value and before texts.
    bool isLess(int left, int right, int column) const;

    // One row as tab separated text, and the line of captions above it.
    QString copyText(int number) const;
    QString copyCaptions() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void translateWords();
    QString text(const HistoryRow& row, int column) const;
    QString plainText(const HistoryRow& row, int column) const;
    QString deviceText(const JournalEntry& entry) const;

    TranslateText m_tran;
    QHash<QString, QString> m_words; // outcomes in the language in use, by the English ones
    QString m_deviceForm;
    std::vector<JournalEntry> m_entries;
    std::vector<HistoryRow> m_rows; // of m_entries
};
