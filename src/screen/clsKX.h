#pragma once

#include "DecimalTable.h"
#include "GridModel.h"
#include "Log.h"
#include "ModelCatalogue.h"
#include "MultiSet.h"
#include "ParameterFile.h"
#include "ScreenSettings.h"
#include "clsBlock.h"
#include "clsData.h"
#include "clsKXAdr.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class clsLibrary;

// The memory images of a model, one for each read section, in the order in which the data items name them.
class ImageCollection
{
public:
    clsKXAdr* find(const QString& section) const; // null when there is none
    clsKXAdr* add(const QString& section, std::unique_ptr<clsKXAdr> image);
    void clear();
    int count() const { return static_cast<int>(m_images.size()); }
    clsKXAdr& at(int index) const { return *m_images[static_cast<size_t>(index)]; } // 0-based

private:
    std::vector<std::unique_ptr<clsKXAdr>> m_images;
    QHash<QString, clsKXAdr*> m_byName;
};

// A loaded model: the definition files turned into blocks, labels, data items, memory images and a filled grid.
//
// Order of calls: setSpread, Logs, setMaxRC(n) when the model changes, load(n, ...); then lookups and refreshSpread.
// Owns all blocks, items and images; every load replaces them, so pointers from lookups end at the next load.
class clsKX : public QObject
{
    Q_OBJECT

public:
    explicit clsKX(clsLibrary& library, QObject* parent = nullptr);
    ~clsKX() override;

    void setSpread(platform::GridModel* grid); // kept, not owned; null: load stops after the global keys
    platform::GridModel* spread() const { return m_grid; }
    void setLib(clsLibrary* library);
    clsLibrary& library() const { return *m_library; }
    void Logs(Log& objErrLog, Log& objTrcLog);
    void logError(const QString& message) const;
    void logTrace(const QString& message) const;

    // The model string of the controller in use: decides which objects are built.
    void setModel(const QString& modelString) { m_modelString = modelString; }
    QString modelString() const { return m_modelString; }
    QString ModelName() const { return m_entry.code; }
    QString Name() const { return m_entry.name; }
    QString Ext() const { return m_settings.ext(); }
    QString DataPath() const { return m_settings.dataPath; }
    QString DialogFilter() const { return m_settings.dialogFilter; }
    int getDataMax() const { return m_settings.dataCount; }
    QString getOptStr(int n) const;
    const ModelEntry& entry() const { return m_entry; }
    const ScreenSettings& settings() const { return m_settings; }

    // Reads catalogue entry n and the grid size, and sizes the grid.
    void setMaxRC(int n);
    // Reads catalogue entry n and its whole screen file and builds the grid; 1 when no grid is attached, else 0.
    int load(int n, clsLibrary* objLib, const QString& modelString);

    // Redraws all visible items; with bFromComm first takes stored values from the memory images that hold data from
    // the controller, for all items or those of the blocks given. Items of an image that holds none are shown empty.
    void refreshSpread(bool bFromComm, const std::vector<clsBlock*>* colRefData);
    // Off-line ("UseCommunicate") nothing is read: the images count as read and all items take their defaults.
    bool isOffLine() const;
    bool holdsDefaults() const; // nothing was read, loaded or entered since the load
    void fillOffLine();
    // Shows one item as changed (blue, bold).
    void refreshCell(clsData& item);

    // Set the stored or the display value by tag; with sOnlyHide only when the item has no cell. A tag that does not
    // exist changes nothing. The grid is not touched.
    void setData(const QString& tag, const QString& storedValue, bool sOnlyHide);
    void setVData(const QString& tag, const QString& displayValue, bool sOnlyHide);
    MultiSet& multiSet() { return m_multiSet; }

    // Null or empty when not found. A tag that does not exist is tried with "1" to "9" behind it.
    clsData* getDataByTag(const QString& tag) const;
    clsData* getDataByRC(int row, int col) const;
    QString getTag(int n) const;
    QString checkTag(const QString& text) const; // "TAGxxx": that tag's display value; else the text itself
    clsBlock* getBlockByNo(int number) const;
    clsBlock* getBlockByRC(int row, int col) const;
    const std::vector<clsBlock*>& BlockCol() const { return m_blockList; }
    const ImageCollection& ColAdr() const { return m_images; }
    const std::vector<std::unique_ptr<clsData>>& items() const { return m_items; } // in item order

    // Parameter data files. Saving returns why the file was not written, empty when it was. Loading returns True when
    // the file was not taken; lastLoad tells why, and what it changed.
    QString saveData(const QString& fileName) const;
    bool loadData(const QString& fileName);
    const ParameterLoad& lastLoad() const { return m_lastLoad; }
    ParameterSet currentSet() const; // all items; what was never read or set has an empty value

    // Decimal places of alarm k (1 to 3), its value and its dead-band.
    int getEVDot(int k) const { return alarmDecimals(m_eventDot, k); }
    int getEVDBDot(int k) const { return alarmDecimals(m_eventBandDot, k); }

    // Whether the comm file says how the item's value reaches the controller.
    bool isWritable(const clsData& item) const;
    // Items whose tag an earlier one bears: they have cells, but look-ups by tag do not find them.
    const std::vector<std::unique_ptr<clsData>>& duplicates() const { return m_duplicates; }

    // The input range (item PQRNO) is a voltage or current input, which is scaled freely.
    bool hasVoltageRange() const;

    // A step of a look-up that may go on to other items, for as long as it lives.
    class ReferenceStep
    {
    public:
        explicit ReferenceStep(const clsKX& owner) : m_depth(owner.m_referenceDepth) { ++m_depth; }
        ~ReferenceStep() { --m_depth; }
        ReferenceStep(const ReferenceStep&) = delete;
        ReferenceStep& operator=(const ReferenceStep&) = delete;
        bool isTooDeep() const { return m_depth > kMaxReferenceDepth; }

    private:
        int& m_depth;
    };
    void noteCircle(const clsData& item) const; // once for each item and load
    void noteMissingTables();                   // told to the user once for each load

    // The unit switch: which input table an item uses. 0 Celsius, else Kelvin.
    int unitSwitch() const { return m_unitSwitch; }
    void setUnitSwitch(int value) { m_unitSwitch = value; }
    void followUnit(const clsData& item); // takes the switch from the item tagged "SWQCF"; nothing for others

Q_SIGNALS:
    // mode 0: a phase starts, number is its total and text names it; 1: step number done; 2: the phase ended.
    void LoadEvent(int mode, int number, const QString& text);

private:
    friend class GridBuilder;

    static constexpr int kMaxReferenceDepth = 20; // decimal places by way of other items
    static constexpr int kMaxFaults = 200;        // faults of a definition that are noted one by one

    int alarmDecimals(const DecimalTable& table, int k) const;
    void clear();
    void addBlock(std::unique_ptr<clsBlock> block, int row, int col);
    bool takeTag(clsData& item); // false: the tag is taken
    bool hasValue(const clsData& item) const;
    clsData* addItem(std::unique_ptr<clsData> item, int number);
    void joinImage(const clsData& item);
    void noteFaults(const clsData& item);
    void noteFault(const QString& where, const QString& fault);
    void checkColor(const QString& where, const QString& text); // notes a colour text of no known form

    clsLibrary* m_library;
    std::reference_wrapper<Log> m_errorLog = noLog();
    std::reference_wrapper<Log> m_traceLog = noLog();
    platform::GridModel* m_grid = nullptr;
    QString m_modelString;
    ModelEntry m_entry;
    ScreenSettings m_settings;
    DecimalTable m_eventDot;
    DecimalTable m_eventBandDot;
    int m_unitSwitch = 0;
    MultiSet m_multiSet{*this};
    mutable int m_referenceDepth = 0;
    mutable QSet<int> m_circles; // numbers of the items whose references run in a circle
    int m_faultCount = 0;
    bool m_tablesMissing = false;
    ParameterLoad m_lastLoad;
    QHash<QString, bool> m_colors; // texts checked during the load: whether they are colours

    std::vector<std::unique_ptr<clsBlock>> m_blocks;
    std::vector<clsBlock*> m_blockList;
    QHash<int, clsBlock*> m_blockByNo;
    QHash<QString, clsBlock*> m_blockByCell;
    std::vector<std::unique_ptr<clsData>> m_items;
    std::vector<std::unique_ptr<clsData>> m_duplicates; // items whose tag is taken: cells without a place in lookups
    QHash<QString, clsData*> m_itemByTag;
    QHash<QString, QString> m_tagByFileKey;
    QHash<QString, clsData*> m_itemByCell;
    std::vector<QString> m_tags;
    ImageCollection m_images;
};
