#pragma once

#include "ChangeList.h"
#include "TransferReports.h"

#include <QHash>
#include <QStringList>

#include <optional>
#include <vector>

// How a parameter of the review stands.
enum class ReviewState { Changed, Refused, Conflict, NotSent, NotAccepted, Failed, Accepted };

struct ReviewRow
{
    ChangeRow change;
    bool ticked = false; // to be sent
    ReviewState state = ReviewState::Changed;
    QString reason;    // of the state, for a person, in the user's language
    QString seenShown; // of a conflict: what the controller held when the value was changed
};

// What would go out and what became of what did: the changes of a model, each ticked or not, and how the last write of
// it ended. Settings are ticked by themselves; what belongs to one instrument, to the line, or starts something is
// ticked by hand. The model is kept by reference.
//
// Order of calls: refresh after an edit, noteWrite after a write, forget after a read or when the model is loaded anew.
class Review
{
public:
    explicit Review(const clsKX& kx) : m_kx(kx) {}

    void refresh();
    void noteWrite(const WriteReport& report);
    void forget();

    const std::vector<ReviewRow>& rows() const { return m_rows; } // in item order
    void setTicked(const QString& tag, bool ticked);
    QStringList ticked() const;
    // Those whose last write did not succeed, to be sent once more: a command only when it was ticked since.
    QStringList failed() const;
    int changes() const; // rows that the controller does not hold

private:
    struct Note
    {
        std::optional<bool> ticked; // by hand, or by what became of it
        ReviewState state = ReviewState::Changed;
        QString reason;
        QString seen;  // stored
        QString value; // stored; another one by now is a new change
    };

    bool hasOutcome(const QString& tag) const;
    ReviewRow rowOf(const clsData& item) const;

    const clsKX& m_kx;
    std::vector<ReviewRow> m_rows;
    QHash<QString, Note> m_notes; // by tag
};
