#pragma once

#include "ControlRegistry.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;
class clsLibrary;

// The small window shown while the program talks to the controller or loads a model screen. One instance serves the
// program. It can disable its owner while it is shown; when it closes, for whatever reason, the owner is enabled again.
// Cancel, Escape and the close button are reported to the owner by ProgCancel, and the button says so; the dialog stays
// until unloadForm.
class frmProgbar : public QDialog
{
    Q_OBJECT

public:
    explicit frmProgbar(QWidget* parent = nullptr);
    ~frmProgbar() override;

    // The library that translates the dialog, kept; without one the texts stay as they are given.
    void setLib(clsLibrary* objLib) { m_library = objLib; }

    // sTitle and sLabel in English; Index is handed back with ProgCancel.
    void showModeless(QWidget* Owner, int lMax, const QString& sTitle, const QString& sLabel, int Index, bool bDisable,
                      bool bCButton);
    // Raises the maximum when it is passed, and has the window system paint. Keys and mouse are read only while the
    // owner is disabled: otherwise a person could reach it in the middle of a load.
    void setPos(int lPos);
    void setText(const QString& text); // shown as it is; the dialog grows for it
    void unloadForm();

    void reject() override;

Q_SIGNALS:
    void ProgCancel(int Index);

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void setupControls();
    void askCancel();
    void translate(const QString& title, const QString& label);
    void releaseOwner();
    void placeOver(const QWidget* owner);
    void belongTo(const QWidget* owner);

    clsLibrary* m_library = nullptr;
    QPointer<QWidget> m_owner;
    int m_index = 0;
    bool m_ending = false;
    QLabel* m_label;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
    std::unique_ptr<platform::ControlRegistry> m_controls;
};
