#pragma once

#include "ChangeCause.h"
#include "ChoiceTable.h"
#include "DefinitionFinding.h"
#include "GridModel.h"
#include "ParameterClass.h"

#include <QString>
#include <QStringList>
#include <vector>

class clsINI;
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
    ChangeCause cause;
    bool operator==(const ItemState&) const = default;
};

// The limit texts of an item as its definition gives them; the current ones can be replaced by an entry elsewhere.
struct LimitTexts
{
    QString currentLower;
    QString currentUpper;
    QString definedLower;
    QString definedUpper;
    QString lowerSign; // "<=" or "<"
    QString upperSign;
};

// What one section "Datas"n of a screen file defines, and the stored value of that parameter: all of an item that does
// not depend on other items. load reads the section; afterwards only the stored value, Edit and the current limits
// change. How a value is shown, scaled and limited by other items is computed from this and an ItemLookup.
class ItemData
{
public:
    int Edit = EditState::kUntouched;
    SendMark sendMark = SendMark::None;
    ChangeCause cause; // while it is changed

    // Reads section "Datas"number. bUse false: the item is visible whatever the file says. The library is kept.
    void load(clsINI& objIni, int number, clsLibrary* objLib, bool bUse);
    // What is wrong with the section, without the file; the item then uses the nearest sane reading. Empty when all is
    // well.
    const std::vector<DefinitionFinding>& findings() const { return m_findings; }
    bool lacksTables() const { return m_lacksTables; } // it chooses from tables whose file is missing

    int number() const { return m_number; }
    QString definitionSection() const { return QStringLiteral("Datas%1").arg(number()); }
    QString Key() const { return m_tag; }
    QString DataName() const { return m_name; }
    QString nameOrTag() const { return m_name.isEmpty() ? m_tag : m_name; }
    int BlockNo() const { return m_blockNo; }
    bool isReadOnly() const { return m_readOnly; } // only the controller changes it: takes no entry, is never written
    ParameterClass Class() const { return m_class; }
    bool Visible() const { return m_visible; }
    int Row() const { return m_row; }
    int Col() const { return m_col; }
    QString WSection() const { return m_writeSection; }
    QString RSection() const { return m_readSection; }
    QString Address() const { return m_address; }
    int DataLen() const { return m_dataLen; } // bytes
    ItemType MType() const { return m_type; }
    platform::CellType CellType() const;
    bool showsStoredText() const; // a cell type name that is none of the known ones

    QString BitOnCap() const { return m_bitOnCaption; }
    QString BitOffCap() const { return m_bitOffCaption; }
    int BitOn() const { return m_bitOn; }
    int BitOff() const { return m_bitOff; }
    int BitMask() const { return m_bitMask; }
    QString ComboString() const; // choices separated by tab characters
    const QStringList& comboStrings() const { return m_comboStrings; }
    const QStringList& comboDatas() const { return m_comboDatas; }
    QString Section() const { return m_multiSection; }
    QString ICSection() const { return m_inputCSection; }
    QString IKSection() const { return m_inputKSection; }
    const ChoiceTable& multiTable() const { return m_multiTable; }
    const ChoiceTable& inputCTable() const { return m_inputCTable; }
    const ChoiceTable& inputKTable() const { return m_inputKTable; }
    bool checkMulti() const; // chosen from a table
    bool doMultiSelect() const { return m_typeName == u"Multi"; }
    bool doInputSelect() const { return m_type == ItemType::Input; }
    QString DefData() const { return m_defaultData; }
    QString decimalsText() const { return m_decimalsText; } // a number, or "DOT" and the tag that shows it
    QString decimalsReference() const;                      // that tag; empty for a plain number

    // Stored value. A value that the controller sent and one that is only the definition's default look the same:
    // isKnown tells them apart.
    QString Data() const { return m_data; }
    void hold(const QString& storedValue); // this item alone: what a choice sets besides stays as it is
    void markEntered();                    // an entry, whether or not it changes the stored value
    bool isKnown() const { return m_known; }
    void setKnown(bool known) { m_known = known; }
    bool holdsDefault() const { return m_holdsDefault; } // nothing has set a value since the load
    void setHoldsDefault() { m_holdsDefault = true; }    // what was set is the definition's default
    int ComboIdx() const;                                // of the stored value among the combo data, 0 when none
    QString ButtonCaption() const;

    // Taken before an edit, put back by its undo; carries nothing over to other items.
    ItemState state() const;
    void restore(const ItemState& state);

    const LimitTexts& limitTexts() const { return m_limits; }
    void setLimitL(const QString& limit) { m_limits.currentLower = limit; }
    void setLimitH(const QString& limit) { m_limits.currentUpper = limit; }

    QString backColorName() const { return m_backColorName; }
    QString foreColorName() const { return m_foreColorName; }
    platform::ColorRef BackColor() const;
    platform::ColorRef ForeColor() const { return SprForeColor(); }
    platform::ColorRef SprForeColor() const; // blue when changed
    bool SprFontBold() const { return Edit == EditState::kChanged; }

private:
    void readPlace(clsINI& ini, const QString& section);
    void readClass(clsINI& ini, const QString& section);
    void readValue(clsINI& ini, const QString& section);
    void readChoices(clsINI& ini, const QString& section);
    void readTables();
    QStringList fields(const QString& key, const QString& text, const QString& defaultText);
    void addFinding(const QString& key, const QString& fault, const QString& remedy);
    int number(const QString& key, const QString& text);

    QString m_tag;
    QString m_name;
    int m_number = 0;
    int m_blockNo = 0;
    bool m_visible = true;
    bool m_readOnly = false;
    ParameterClass m_class = ParameterClass::Setting;
    QString m_enabled;
    int m_row = 0;
    int m_col = 0;
    QString m_backColorName;
    QString m_foreColorName;
    QString m_writeSection;
    QString m_readSection;
    QString m_typeName;
    QString m_address;
    ItemType m_type = ItemType::Data;
    int m_dataLen = 0;
    QString m_bitOnCaption;
    QString m_bitOffCaption;
    int m_bitOn = 1;
    int m_bitOff = 0;
    int m_bitMask = 0;
    QString m_decimalsText;
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
    clsLibrary* m_library = nullptr;
    bool m_lacksTables = false;
    std::vector<DefinitionFinding> m_findings;
};
