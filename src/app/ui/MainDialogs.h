#pragma once

#include "Journal.h"

#include <QObject>
#include <functional>
#include <memory>

class ProgramContext;
class QWidget;
class LineStatistics;
class clsKX;
class frmBackups;
class frmHistory;
class frmOption;
class frmShowVersion;
class frmTraffic;
struct FrameFields;
struct ParameterSet;

// The windows that the main window opens beside itself, each made at its first use: options, version, traffic,
// history, backups. All parts are kept, not owned.
class MainDialogs : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ProgramContext& program;
        QWidget& window;
        clsKX& kx;
        std::function<QString()> device; // that the link stands for now
        LineStatistics& statistics;
        std::function<QString(const QString& stamp, const FrameFields& fields)> parameters; // see TrafficNames
        std::function<bool()> mayReload; // whether options may be stored that have the model loaded anew
        std::function<void(const ParameterSet& set)> loadBackup;
    };

    explicit MainDialogs(Parts parts);
    ~MainDialogs() override;

    void showOption();
    void showVersion();
    void showTraffic();
    void showHistory();
    void showBackups();
    void setBusy(bool busy); // a transfer is going on
    void refresh();          // the grid or the controller holds other values
    // Those that stay open, in the language in use.
    void translate();
    void close();

Q_SIGNALS:
    void designChanged(); // language or font
    void optionsStored();

private:
    Parts m_parts;
    Journal m_journal;
    std::unique_ptr<frmOption> m_option;
    std::unique_ptr<frmShowVersion> m_version;
    std::unique_ptr<frmTraffic> m_traffic;
    std::unique_ptr<frmHistory> m_history;
    std::unique_ptr<frmBackups> m_backups;
};
