#pragma once

#include <QObject>
#include <functional>
#include <memory>

class ProgramContext;
class QWidget;
class frmOption;
class frmShowVersion;
class frmTraffic;

// The windows that the main window opens beside itself, each made at its first use: options, version, traffic. The
// program and the window are kept, not owned.
class MainDialogs : public QObject
{
    Q_OBJECT

public:
    // mayReload: whether options may be stored that have the model loaded anew.
    MainDialogs(ProgramContext& program, QWidget& window, std::function<bool()> mayReload);
    ~MainDialogs() override;

    void showOption();
    void showVersion();
    void showTraffic();
    // Those that stay open, in the language in use.
    void translate();
    void close();

Q_SIGNALS:
    void designChanged(); // language or font
    void optionsStored();

private:
    ProgramContext& m_program;
    QWidget& m_window;
    std::function<bool()> m_mayReload;
    std::unique_ptr<frmOption> m_option;
    std::unique_ptr<frmShowVersion> m_version;
    std::unique_ptr<frmTraffic> m_traffic;
};
