#pragma once

#include "Review.h"
#include "Translator.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

// The rows of a review as a table with a tick box in the first column. They are those of the last reload, whatever the
// review has come to since. The review is kept by reference.
class ReviewModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { kName, kBlock, kHeld, kValue, kState, kCause, kClass, kTag, kColumns };
    enum Role {
        kStateRole = Qt::UserRole, // ReviewState
        kSortRole                  // a number where the text is one
    };

    ReviewModel(Review& review, TranslateText tran, QObject* parent = nullptr);

    void reload();
    void retranslate(); // after a change of language

    const ReviewRow& row(int row) const { return m_rows[static_cast<size_t>(row)]; }
    // One row as tab separated text, and the line of captions above it.
    QString copyText(int row) const;
    QString copyCaptions() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void ticked(); // a person has changed what is to be sent

private:
    QString text(const ReviewRow& row, int column) const;
    QString stateText(const ReviewRow& row) const;
    QString shown(const ReviewRow& row, const QString& value) const;
    static QString whyNotTicked(ParameterClass kind);

    Review& m_review;
    TranslateText m_tran;
    std::vector<ReviewRow> m_rows;
};

// Which rows are looked at: by state, and by a text in name, block or tag.
class ReviewFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    enum class Show { All, Conflicts, Failed, Accepted };

    explicit ReviewFilter(QObject* parent = nullptr);
    void setShow(Show show);
    void setSearch(const QString& text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    Show m_show = Show::All;
    QString m_search;
};
