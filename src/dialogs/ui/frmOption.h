#pragma once

#include "FontChooser.h"
#include "Log.h"
#include "ModelessOwner.h"
#include "OptionValues.h"
#include "WidgetPlacement.h"

#include <QDialog>
#include <functional>

#include <memory>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QTabWidget;

namespace platform {
class ControlRegistry;
}

// The options: language, questions, display and font. OK stores them and reports what the owner acts on; Cancel, Escape
// and the close button leave everything as it was. showModeless opens it, as often as wanted; the owner outlives it.
class frmOption : public QDialog
{
    Q_OBJECT

public:
    frmOption(clsLibrary& library, clsCfg& settings, FontChooser chooser = chooseFont);
    ~frmOption() override;

    void Logs(Log& objErrLog, Log& objTrcLog);

    // bDisable: the owner is disabled while the dialog is open, and the dialog is modal.
    void showModeless(QWidget* frmOwner, bool bDisable);

    // Asked before options are stored that have the model loaded anew; false leaves the dialog open.
    void setMayReload(std::function<bool()> mayReload) { m_mayReload = std::move(mayReload); }

Q_SIGNALS:
    void designChanged(); // language or font: everything is to be shown anew
    void stored();        // after that; the program may work off-line now, or on-line

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void setupForm();
    QWidget* setupGeneralPage();
    QWidget* setupQuestionPage();
    QWidget* setupDisplayPage();
    QCheckBox* addCheck(int index, const QString& caption);
    void registerControls();
    void fill();
    void onFont();
    void onOk();
    void trace(const QString& message);

    clsLibrary& m_library;
    FontChooser m_chooser;
    std::function<bool()> m_mayReload = [] { return true; };
    OptionValues m_values;
    ModelessOwner m_owner;
    platform::WidgetPlacement m_placement;
    std::unique_ptr<platform::ControlRegistry> m_registry;
    std::reference_wrapper<Log> m_errorLog = noLog();
    std::reference_wrapper<Log> m_traceLog = noLog();

    QTabWidget* m_tabs = nullptr;                    // SSTab1
    QComboBox* m_languages = nullptr;                // Combo1
    QCheckBox* m_checks[OptionValues::kChecks] = {}; // Check1
    QLabel* m_font = nullptr;                        // Label1
    QPushButton* m_chooseFont = nullptr;             // Command2
    QPushButton* m_ok = nullptr;                     // Command1(0)
    QPushButton* m_cancel = nullptr;                 // Command1(1)
    QGroupBox* m_frames[3] = {};                     // Frame1 to Frame3
};
