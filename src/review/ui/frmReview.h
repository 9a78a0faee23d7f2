#pragma once

#include "RecordWindow.h"
#include "ReviewModel.h"

#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class ProgressRow;
class ProgressView;
class RecordTable;
class clsLibrary;

namespace platform {
class ControlRegistry;
}

// What would change in the controller, before it goes out, and what became of it afterwards. The window asks for what
// it cannot do itself; a transfer that it asked for shows its progress here.
//
// show opens it, as often as wanted; reload after the review has changed; tranForm puts it into the language in use.
class frmReview : public RecordWindow
{
    Q_OBJECT

public:
    frmReview(const clsLibrary& library, Review& review);
    ~frmReview() override;

    void tranForm();
    void reload();
    // Why nothing can be sent, in the user's language; empty: it can.
    void setObstacle(const QString& reason);

    void setBusy(bool busy); // a transfer is going on, asked for here or elsewhere

    ProgressView& progress(); // of a transfer that was asked for here

Q_SIGNALS:
    void sendWanted(const QStringList& tags);
    void revertWanted(const QStringList& tags);
    void goWanted(const QString& tag);
    void cancelled();

private:
    void setupForm();
    QWidget* setupFilter();
    QWidget* setupButtons();
    void connectForm();
    void registerControls();
    void showStatus();
    void copy();
    void goToCurrent();
    void tickSelected();
    ReviewRow rowAt(int shownRow) const;
    qsizetype hiddenOf(const QStringList& tags) const; // how many the filter does not let through
    QStringList selectedTags() const;
    bool isChangeSelected() const;

    Review& m_review;
    ReviewModel m_model;
    ReviewFilter m_shown;
    std::unique_ptr<platform::ControlRegistry> m_registry;
    QString m_obstacle;
    bool m_isBusy = false;

    QLineEdit* m_search = nullptr;   // Text1
    QComboBox* m_filter = nullptr;   // Combo1
    RecordTable* m_table = nullptr;  // tblReview
    QPushButton* m_send = nullptr;   // Command1(0)
    QPushButton* m_retry = nullptr;  // Command1(1)
    QPushButton* m_revert = nullptr; // Command1(2)
    QPushButton* m_copy = nullptr;   // Command1(3)
    QPushButton* m_close = nullptr;  // Command1(4)
    QPushButton* m_stop = nullptr;   // Command1(5)
    ProgressRow* m_progress = nullptr;
    QLabel* m_status = nullptr; // Label1
};
