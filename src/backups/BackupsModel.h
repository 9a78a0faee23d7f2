#pragma once

#include "BackupStore.h"
#include "Translator.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

// The list of backups as a table, in the order of the list.
class BackupsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { kTime, kModel, kCause, kDifferences, kColumns };
    enum Role {
        kSortRole = Qt::UserRole // of the time: the place in the list, higher for a newer one
    };

    explicit BackupsModel(TranslateText tran, QObject* parent = nullptr);

    void setEntries(std::vector<BackupEntry> entries); // their differences are not known yet
    void setDifferences(int row, std::optional<int> differences);
    const BackupEntry& entry(int row) const { return m_rows[static_cast<size_t>(row)].entry; }
    int rowOf(const QString& file) const; // -1 for none
    void retranslate();                   // after a change of language

    // One row as tab separated text; and the line of captions above it.
    QString copyText(int row) const;
    QString copyCaptions() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        BackupEntry entry;
        std::optional<int> differences;
    };
    static QString text(const Row& row, int column);
    QVariant sortKey(int row, int column) const;
    QString caption(int column) const;

    TranslateText m_tran;
    std::vector<Row> m_rows;
};
