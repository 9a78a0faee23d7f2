#pragma once

#include "ModelessOwner.h"
#include "ProgramVersion.h"
#include "WidgetPlacement.h"

#include <QDialog>

#include <memory>

class QLabel;
class QPushButton;
class clsLibrary;

namespace platform {
class ControlRegistry;
}

// The program's title and version. showModeless opens it, as often as wanted.
class frmShowVersion : public QDialog
{
    Q_OBJECT

public:
    frmShowVersion(const clsLibrary& library, const ProgramVersion& version);
    ~frmShowVersion() override;

    // bModal: the owner is disabled while the dialog is open.
    void showModeless(QWidget* frmOwner, bool bModal);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void setupForm();
    void loadForm();
    void centre();

    const clsLibrary& m_library;
    const ProgramVersion m_version;
    platform::WidgetPlacement m_placement;
    ModelessOwner m_owner;
    std::unique_ptr<platform::ControlRegistry> m_registry;
    QLabel* m_title = nullptr;     // lblTitle
    QLabel* m_text = nullptr;      // lblVersion
    QLabel* m_licence = nullptr;   // lblLicence
    QPushButton* m_exit = nullptr; // cmdExit
};
