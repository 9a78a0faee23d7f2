#pragma once

#include "ChoiceTable.h"
#include "GridModel.h"
#include "ItemLimits.h"
#include "Log.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class clsINI;
class clsKX;
class clsLibrary;

// Item types (MType).
enum class ItemType { Bit = 0, Data = 1, Combo = 2, Multi = 3, Input = 4, String = 5 };

// Change state of an item (Edit).
namespace EditState {
constexpr int kUntouched = 0;
constexpr int kRead = 1;    // taken from the controller
constexpr int kChanged = 2; // changed by an entry or a loaded file
} // namespace EditState

// What edits change of an item.
struct ItemState
{
    QString data;
    bool known = true;
    bool holdsDefault = true;
    int edit = EditState::kUntouched;
    QString currentLower; // limit texts
    QString currentUpper;
    bool operator==(const ItemState&) const = default;
};

// One of the values that an item can be chosen from.
struct ItemChoice
{
    QString stored;
    QString text; // as shown
};

// One parameter of the controller as the grid shows it. Holds the stored value (Data, as the controller holds it) and
// turns it into the display value (VData, the text shown) by the item's type and decimal places.
//
// load reads the item's section; afterwards only Data, Edit and the current limits change. The owner (clsKX) outlives
// the item and answers look-ups of other tags. A reference that leads back to the item itself counts as a missing one.
class clsData
{
public:
    int Edit = EditState::kUntouched;

    void Logs(Log& objErrLog, Log& objTrcLog);

    // Reads section "Datas"number. bUse false: the item is visible whatever the file says.
    void load(clsINI& objIni, int number, clsKX* owner, clsLibrary* objLib, bool bUse);

    const clsKX& owner() const { return *m_owner; }
    int number() const { return m_number; }
    QString Key() const { return m_tag; }
    QString DataName() const { return m_name; }
    int BlockNo() const { return m_blockNo; }
    bool isReadOnly() const { return m_readOnly; } // only the controller changes it: takes no entry, is never written
    bool Visible() const { return m_visible; }
    int Row() const { return m_row; }
    int Col() const { return m_col; }
    QString WSection() const { return m_writeSection; }
    QString RSection() const { return m_readSection; }
    QString Address() const { return m_address; }
    int DataLen() const { return m_dataLen; }
    ItemType MType() const { return m_type; }
    platform::CellType CellType() const;
    bool showsStoredText() const; // a cell type name that is none of the known ones

    QString BitOnCap() const { return m_bitOnCaption; }
    QString BitOffCap() const { return m_bitOffCaption; }
    int BitOn() const { return m_bitOn; }
    int BitOff() const { return m_bitOff; }
    int BitMask() const { return m_bitMask; }
    // False for a stored value that none of its choices has; true for what is no choice.
    bool isAmongChoices() const;
    QString ComboString() const; // choices separated by tab characters
    QString Section() const { return m_multiSection; }
    QString ICSection() const { return m_inputCSection; }
    QString IKSection() const { return m_inputKSection; }
    bool checkMulti() const; // chosen from a table
    bool doMultiSelect() const { return m_typeName == u"Multi"; }
    bool doInputSelect() const { return m_type == ItemType::Input; }
    std::vector<ItemChoice> choices() const; // of a Bit, Combo, Multi or Input item, in the definition's order
    QString DefData() const { return m_defaultData; }

    // Stored value. A value that the controller sent and one that is only the definition's default look the same:
    // isKnown tells them apart.
    QString Data() const { return m_data; }
    // Also carries the choice of a Multi or Input item over to the items without a cell that belong to it.
    void setData(const QString& storedValue);
    bool isKnown() const { return m_known; }
    void setKnown(bool known) { m_known = known; }
    bool holdsDefault() const { return m_holdsDefault; } // nothing has set a value since the load
    void setHoldsDefault() { m_holdsDefault = true; }    // what was set is the definition's default

    // Taken before an edit, given back by its undo; carries nothing over to other items.
    ItemState state() const;
    void restore(const ItemState& state);

    QString VData() const;
    void setVData(const QString& displayValue);          // marks the item changed; a number is scaled up and stored
    QString displayOf(const QString& storedText) const;  // a stored number scaled down and formatted as this item's
    QString storedOf(const QString& displayValue) const; // what setVData stores of a number
    int getDecimals() const;
    QString decimalsReference() const; // the tag that shows the decimal places; empty for a plain number
    QString getFormatStr() const;      // "#0", "#0.0", ...
    int ComboIdx() const;              // of the stored value among the combo data, 0 when none
    void setComboIdx(int index);       // 0-based; an index outside the combo data changes nothing

    // Limits in display units and how a value is compared with them ("<=" or "<"), as the other items make them now.
    QString LimitL() const;
    QString LimitH() const;
    QString SignL() const;
    QString SignH() const;
    void setLimitL(const QString& limit) { m_limits.currentLower = limit; }
    void setLimitH(const QString& limit) { m_limits.currentUpper = limit; }
    const LimitTexts& limitTexts() const { return m_limits; }
    QString ButtonCaption() const;

    // What is wrong with the item's section; the item then uses the nearest sane reading. Empty when all is well.
    const QStringList& faults() const { return m_faults; }

    QString backColorName() const { return m_backColorName; }
    QString foreColorName() const { return m_foreColorName; }
    platform::ColorRef BackColor() const;
    platform::ColorRef ForeColor() const { return SprForeColor(); }
    platform::ColorRef SprForeColor() const; // blue when changed
    bool SprFontBold() const { return Edit == EditState::kChanged; }

private:
    void readPlace(clsINI& ini, const QString& section);
    void readValue(clsINI& ini, const QString& section);
    void readChoices(clsINI& ini, const QString& section);
    void readTables();
    QStringList fields(const QString& key, const QString& text, const QString& defaultText);
    int number(const QString& key, const QString& text);
    QString comboDisplay() const;
    const ChoiceTable& inputTable() const; // of the unit in use
    int decimalsByTag(bool& decided) const;
    int decimalsByReference() const;

    int m_number = 0;
    QString m_tag;
    QString m_name;
    int m_blockNo = 0;
    bool m_visible = true;
    bool m_readOnly = false;
    QString m_enabled;
    int m_row = 0;
    int m_col = 0;
    QString m_backColorName;
    QString m_foreColorName;
    QString m_writeSection;
    QString m_readSection;
    QString m_typeName;
    ItemType m_type = ItemType::Data;
    QString m_address;
    int m_dataLen = 0;
    QString m_bitOnCaption;
    QString m_bitOffCaption;
    int m_bitOn = 1;
    int m_bitOff = 0;
    int m_bitMask = 0;
    QString m_decimalsText; // a number, or "DOT" and the tag that shows it
    LimitTexts m_limits;
    QStringList m_comboStrings;
    QStringList m_comboDatas;
    QString m_multiSection;
    QString m_inputCSection;
    QString m_inputKSection;
    QString m_defaultData;
    QString m_data;
    bool m_known = true;
    bool m_holdsDefault = true;
    ChoiceTable m_multiTable;
    ChoiceTable m_inputCTable;
    ChoiceTable m_inputKTable;
    clsKX* m_owner = nullptr;
    clsLibrary* m_library = nullptr;
    std::reference_wrapper<Log> m_errorLog = noLog();
    std::reference_wrapper<Log> m_traceLog = noLog();
    mutable bool m_resolving = false; // inside a look-up that may lead back here
    QStringList m_faults;
};
