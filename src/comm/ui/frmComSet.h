#pragma once

#include "ComSetSession.h"
#include "WidgetPlacement.h"

#include <QDialog>

#include <memory>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

class FormatChoice;
class PortField;

namespace platform {
class ControlRegistry;
class Timer;
} // namespace platform

// The communication settings: port, line format, transmission mode, slave number and model of the controller, and the
// question to the controller which model it is. Shows a ComSetSession and decides nothing itself.
//
// One object, one showing: constructing it takes the port from the main window's link, destroying it gives the port
// back. Call Logs, then exec. When OK succeeded the dialog hides, and exec returns when the read that follows has
// ended. close() is safe at any moment, also while the controller is being asked.
class frmComSet : public QDialog
{
    Q_OBJECT

public:
    explicit frmComSet(const ComSetSession::Parts& parts, QWidget* parent = nullptr);
    ~frmComSet() override;

    void Logs(Log& objErrLog, Log& objTrcLog);

    // Escape: gives a detection up, else leaves like Cancel.
    void reject() override;

Q_SIGNALS:
    void trafficWanted(); // the frames on the line are to be shown

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void setupForm();
    QGroupBox* setupPortFrame();
    QGroupBox* setupModeFrame();
    QGroupBox* setupControllerFrame();
    QWidget* setupProgress();
    QWidget* setupButtons();
    void setupTabOrder();
    void connectControls();
    void registerControls();
    void nameFields();
    void fill(const ComSetFields& fields);

    ComSetFields readFields() const;
    void showFields(const ComSetFields& fields);
    void showLine(const ComSetFields& fields);
    void showModelString(const QString& modelString);
    QString shownModelString() const;
    QString modelString() const;
    void showPortError();
    void showLineWarning();
    void showNotice(QLabel& label, const QString& text);
    void growForNotices();
    void showProgress(const QString& address);
    void hideProgress();
    void enableControls(bool enabled);
    void onModelPicked(int position);
    QWidget& wrongField(const ComSetFields& fields, QWidget& otherwise) const;
    void onDetect();
    void onSearch();
    void onOk();
    void leave();

    clsLibrary& m_library;
    ComSetSession m_session;
    std::unique_ptr<platform::ControlRegistry> m_registry;
    std::unique_ptr<platform::Timer> m_portLook;
    platform::WidgetPlacement m_placement;

    QString m_heldModelString; // what the field shows, as it came

    QGroupBox* m_frames[3] = {};
    QLabel* m_labels[6] = {};
    PortField* m_port = nullptr;        // Combo1
    QComboBox* m_speed = nullptr;       // Combo2
    FormatChoice* m_format = nullptr;   // Option7, Option6 and more
    QRadioButton* m_rtu = nullptr;      // Option4
    QRadioButton* m_ascii = nullptr;    // Option5
    QLineEdit* m_slave = nullptr;       // Text1
    QComboBox* m_model = nullptr;       // Combo3
    QLineEdit* m_modelString = nullptr; // Text2
    QPushButton* m_detect = nullptr;    // Command2
    QPushButton* m_search = nullptr;    // Command3
    QPushButton* m_traffic = nullptr;   // Command4
    QLineEdit* m_timeOut = nullptr;     // Text3
    QPushButton* m_ok = nullptr;        // Command1(0)
    QPushButton* m_cancel = nullptr;    // Command1(1)
    QLabel* m_error = nullptr;
    QLabel* m_warning = nullptr;
    QWidget* m_progress = nullptr;
    QLabel* m_progressText = nullptr;
    QPushButton* m_stop = nullptr;
};
