#pragma once

#include "ControllerScan.h"
#include "Translator.h"

#include <QAbstractTableModel>

#include <vector>

// What a search came upon as texts.
namespace scantexts {

QString remark(ScanFind::Kind kind); // in English; empty for a controller
// The cells of a find by column of ScanModel, the remark in the user's language; as they came, not made visible.
QStringList cells(const ScanFind& find, const TranslateText& tran);

} // namespace scantexts

// The finds of a search as a table, in the order in which they came.
class ScanModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { kPort, kSpeed, kFormat, kMode, kSlave, kModel, kResponse, kRemark, kColumns };

    explicit ScanModel(TranslateText tran, QObject* parent = nullptr);

    void append(const ScanFind& find);
    void retranslate(); // after a change of language
    const ScanFind& find(int row) const { return m_finds[static_cast<size_t>(row)]; }
    // Only a controller with a model string can be connected to.
    bool isConnectable(int row) const;
    // Of the first controller; -1: there is none yet.
    int firstController() const;

    int controllers() const; // that were found

    // The row as tab separated text, and the line of captions above it.
    QString copyText(int row) const;
    QString copyCaptions() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList visibleCells(int row) const;

    TranslateText m_tran;
    std::vector<ScanFind> m_finds;
};
