#pragma once

#include "LogReader.h"
#include "TraceDecoder.h"
#include "Translator.h"

#include <QAbstractTableModel>

#include <deque>
#include <functional>
#include <vector>

// The lines of the trace log as a table, the newest at the end: a row for each request, its repetitions included, and
// for each reply, accepted or rejected. The number of rows is bounded: the oldest go.
class TrafficModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int kMostRows = 5000; // more than a whole log of default size

    enum Column {
        kTime,
        kDirection,
        kSlave,
        kFunction,
        kAddress,
        kParameters,
        kCount,
        kData,
        kCheck,
        kRemark,
        kColumns
    };
    enum Role {
        kIsErrorRole = Qt::UserRole, // bool
        kDetailsRole                 // the whole line at length
    };

    // The names of the parameters that a frame moves; stamp: "2007/03/05 14:07:09.042".
    using NameParameters = std::function<QString(const QString& stamp, const FrameFields& fields)>;

    explicit TrafficModel(TranslateText tran, QObject* parent = nullptr);

    void setNames(NameParameters names) { m_names = std::move(names); } // for rows to come
    void append(const std::vector<LogReader::Entry>& entries);
    // A row of the program's own, about the log: what follows it does not continue what stands before it.
    void appendNote(const QString& english, bool isError);
    void clear();
    void retranslate(); // after a change of language
    int errors() const { return m_errors; }

    // One row as tab separated text, with date and the whole frame; and the line of captions above it.
    QString copyText(int row) const;
    QString copyCaptions() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        QString stamp;
        QString note; // in English; empty for a line of the log
        FrameFields fields;
        QString parameters;
    };

    void addFrame(const LogReader::Entry& entry, std::vector<Row>& rows);
    void reject(const FrameFields& fields, std::vector<Row>& rows);
    void appendRows(std::vector<Row> rows);
    void dropOldest(int count);
    QString text(const Row& row, int column) const; // as it is shown and copied
    QString plainText(const Row& row, int column) const;

    TranslateText m_tran;
    NameParameters m_names = [](const QString&, const FrameFields&) { return QString(); };
    TraceDecoder m_decoder;
    std::deque<Row> m_rows;
    int m_errors = 0;
};
