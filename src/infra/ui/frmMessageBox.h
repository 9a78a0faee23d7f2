#pragma once

#include "ControlRegistry.h"
#include "MessageBoxPlan.h"
#include "WidgetPlacement.h"

#include <QDialog>

#include <array>
#include <memory>

class QLabel;
class QPushButton;
class QScrollArea;
class clsLibrary;

namespace platform {
class Timer;
}

// The program's message box: styles and results are the platform's, the texts of the buttons come from the language
// file. One object is shown again and again; each call sets it up anew. Escape and the window's close button count as
// the button that changes least.
class frmMessageBox : public QDialog
{
    Q_OBJECT

public:
    explicit frmMessageBox(clsLibrary& library);
    ~frmMessageBox() override;

    // Shows the box over its owner (null: on the primary screen) until it is answered or lTimer seconds (0: no limit)
    // have passed; returns the code of the button pressed, after the time limit that of the default button.
    int MsgBox(const QString& Prompt, int Buttons, const QString& Title, QWidget* frmOwner, int lTimer);
    int MsgBox(const Message& message, QWidget* frmOwner); // the same, with one more button

    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void setupControls();
    void connectControls();
    void setTexts(const QString& prompt, const QString& title);
    void setIcon();
    void layOut(const QRect& room);
    QSize setLabelSize(const QSize& most);
    QSize buttonSize() const;
    void placeOver(const QWidget* owner, const QRect& room);
    void startTimer(int seconds);

    clsLibrary& m_library;
    platform::ControlRegistry m_controls;
    platform::WidgetPlacement m_placement;
    MessageBoxPlan m_plan;
    int m_answer = 0; // index of the button that counts when the box has closed

    QLabel* m_icon;
    QScrollArea* m_messageArea; // for a message that is larger than the screen
    QLabel* m_lblMessage;
    std::array<QPushButton*, 3> m_cmdCommand{};
    std::unique_ptr<platform::Timer> m_Timer1;
};
