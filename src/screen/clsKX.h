#pragma once

#include "GridModel.h"
#include "Log.h"
#include "ModelData.h"
#include "ParameterFile.h"

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class clsLibrary;

// A loaded model: the definition files turned into blocks, labels, data items, memory images and a filled grid. The
// other folders work through this class; what it knows and what it does are ModelData and the units that take it.
//
// Order of calls: setSpread, Logs, setMaxRC(n) when the model changes, load(n, ...); then lookups and refreshSpread.
// Owns all blocks, items and images; every load replaces them, so pointers from lookups end at the next load.
class clsKX : public QObject
{
    Q_OBJECT

public:
    explicit clsKX(clsLibrary& library, QObject* parent = nullptr);

    void setSpread(platform::GridModel* grid) { m_grid = grid; } // not owned; null: load stops after the global keys
    platform::GridModel* spread() const { return m_grid; }
    void setLib(clsLibrary* library) { m_model.lookup.library = library; }
    clsLibrary& library() const { return m_model.library(); }
    void Logs(Log& objErrLog, Log& objTrcLog);
    void logError(const QString& message) const { m_model.lookup.log.error(message); }
    // What the last load found wrong with the definition.
    const std::vector<DefinitionFinding>& definitionFindings() const { return m_model.lookup.log.findings(); }
    void logTrace(const QString& message) const;

    // The model string of the controller in use: decides which objects are built.
    void setModel(const QString& modelString) { m_model.lookup.modelString = modelString; }
    QString modelString() const { return m_model.lookup.modelString; }
    QString ModelName() const { return m_model.entry.code; }
    QString Name() const { return m_model.entry.name; }
    QString Ext() const { return m_model.settings.ext(); }
    QString DataPath() const { return m_model.settings.dataPath; }
    QString DialogFilter() const { return m_model.settings.dialogFilter; }
    int getDataMax() const { return m_model.settings.dataCount; }
    QString getOptStr(int n) const;
    const ModelEntry& entry() const { return m_model.entry; }
    const ScreenSettings& settings() const { return m_model.settings; }

    // Reads catalogue entry n and the grid size, and sizes the grid.
    void setMaxRC(int n);
    // Reads catalogue entry n and its whole screen file and builds the grid; 1 when no grid is attached, else 0.
    int load(int n, clsLibrary* objLib, const QString& modelString);

    // Redraws all visible items; with bFromComm first takes stored values from the memory images that hold data from
    // the controller, for all items or those of the blocks given. Items of an image that holds none are shown empty.
    void refreshSpread(bool bFromComm, const std::vector<clsBlock*>* colRefData);
    // Off-line ("UseCommunicate") nothing is read: the images count as read and all items take their defaults.
    bool isOffLine() const { return m_model.isOffLine(); }
    bool holdsDefaults() const; // nothing was read, loaded or entered since the load
    void fillOffLine();
    // Shows one item as changed (blue, bold).
    void refreshCell(clsData& item);
    void showItem(const clsData& item); // as it is
    void showUnits();                   // beside temperatures
    void takeAsRead();                  // no item counts as changed any more; the grid stays as it is

    // Set the stored or the display value by tag; with sOnlyHide only when the item has no cell. A tag that does not
    // exist changes nothing. The grid is not touched.
    void setData(const QString& tag, const QString& storedValue, bool sOnlyHide);
    void setVData(const QString& tag, const QString& displayValue, bool sOnlyHide);

    // Null or empty when not found. A tag that does not exist is tried with "1" to "9" behind it.
    clsData* getDataByTag(const QString& tag) const { return m_model.itemOf(tag); }
    clsData* getDataByRC(int row, int col) const { return m_model.itemAt(row, col); }
    QString getTag(int n) const;
    QString checkTag(const QString& text) const; // "TAGxxx": that tag's display value; else the text itself
    clsBlock* getBlockByNo(int number) const { return m_model.blockOf(number); }
    clsBlock* getBlockByRC(int row, int col) const { return m_model.blockAt(row, col); }
    const std::vector<clsBlock*>& BlockCol() const { return m_model.blocks; }
    const ImageCollection& ColAdr() const { return m_model.images; }
    const std::vector<std::unique_ptr<clsData>>& items() const { return m_model.items; } // in item order
    // Items whose tag an earlier one bears: they have cells, but look-ups by tag do not find them.
    const std::vector<std::unique_ptr<clsData>>& duplicates() const { return m_model.duplicates; }
    const ModelData& data() const { return m_model; } // for the rules that take it

    // Parameter data files. Saving returns why the file was not written, empty when it was. Loading returns True when
    // the file was not taken; lastLoad says why, and what it changed.
    platform::Result<> saveData(const QString& fileName) const;
    bool loadData(const QString& fileName);
    const ParameterLoad& lastLoad() const { return m_lastLoad; }
    // Sets of values; see ParameterSet. The grid is not touched.
    ParameterSet currentSet() const { return ::currentSet(m_model); }
    QStringList setValues(const QVector<QPair<QString, QString>>& values) { return ::setValues(m_model, values); }

    // Decimal places of alarm k (1 to 3), its value and its dead-band.
    int getEVDot(int k) const { return alarmDecimals(m_model.lookup, m_model.lookup.eventDot, k); }
    int getEVDBDot(int k) const { return alarmDecimals(m_model.lookup, m_model.lookup.eventBandDot, k); }

    bool isWritable(const clsData& item) const; // goes to the controller
    // True: the item has no meaning under the current settings; empty: no rule says so or the contrary.
    std::optional<bool> lockOf(const clsData& item) const;
    // The input range is a voltage or current input, which is scaled freely.
    bool hasVoltageRange() const { return ::hasVoltageRange(m_model.lookup); }

    // The unit switch: which input table an item uses. 0 Celsius, else Kelvin.
    int unitSwitch() const { return m_model.lookup.unitSwitch; }
    void setUnitSwitch(int value) { m_model.lookup.unitSwitch = value; }
    void followUnit(const clsData& item); // takes the switch from the item that shows it; nothing for others

Q_SIGNALS:
    // mode 0: a phase starts, number is its total and text names it; 1: step number done; 2: the phase ended.
    void LoadEvent(int mode, int number, const QString& text);

private:
    std::reference_wrapper<Log> m_traceLog = noLog();
    platform::GridModel* m_grid = nullptr;
    ModelData m_model;
    ParameterLoad m_lastLoad;
};
