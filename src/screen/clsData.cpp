#include "clsData.h"

#include "Numbers.h"
#include "clsINI.h"
#include "clsKX.h"
#include "clsLibrary.h"
#include "clsLog.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int kMaxFormatPlaces = 20;                   // more places than any number has digits
constexpr int kVoltagePlaces = 3;                      // of a voltage input, in volts
constexpr int kMaxQuoted = 40;                         // characters of a faulty text that are quoted
constexpr platform::ColorRef kChangedColor = 0xFF0000; // blue
const QString kSeparator = QStringLiteral("vbTab");
const QString kTablesFile = QStringLiteral("MultiSelect.ini");

ItemType typeOf(const QString& name)
{
    static const QStringList names{QStringLiteral("Bit"),   QStringLiteral("Data"),  QStringLiteral("Combo"),
                                   QStringLiteral("Multi"), QStringLiteral("Input"), QStringLiteral("String")};
    const auto index = names.indexOf(name);
    return index < 0 ? ItemType::Data : static_cast<ItemType>(index);
}

bool sameNumber(const QString& left, const QString& right)
{
    const auto a = platform::parseDouble(left);
    const auto b = platform::parseDouble(right);
    return a && b && *a == *b;
}

// 10 to the power of places in single precision; 0 for other counts than 0 to 5.
float powerOfTen(int places)
{
    static constexpr float kPowers[] = {1.0F, 10.0F, 100.0F, 1000.0F, 10000.0F, 100000.0F};
    return places < 0 || places > 5 ? 0.0F : kPowers[places];
}

float scaledDown(float value, int places)
{
    const float divisor = powerOfTen(places);
    return divisor == 0.0F ? 0.0F : value / divisor;
}

QString formatFor(int places)
{
    const int shown = std::min(places, kMaxFormatPlaces);
    return shown <= 0 ? QStringLiteral("#0") : QStringLiteral("#0.") + QString(shown, u'0');
}

} // namespace

void clsData::Logs(clsLog* objErrLog, clsLog* objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
}

void clsData::load(clsINI& objIni, int number, clsKX* owner, clsLibrary* objLib, bool bUse)
{
    m_number = number;
    m_owner = owner;
    m_library = objLib;
    const QString section = QStringLiteral("Datas%1").arg(number);
    m_tag = objIni.GetIniData(section, QStringLiteral("Tag"), QStringLiteral("T%1").arg(number));
    m_blockNo = this->number(QStringLiteral("BlockNo"),
                             objIni.GetIniData(section, QStringLiteral("BlockNo"), QStringLiteral("0")));
    m_name = objIni.GetIniData(section, QStringLiteral("Name"), QString(), true);
    m_visible = true;
    if (bUse)
        m_visible =
            objLib->toBoolean(objIni.GetIniData(section, QStringLiteral("Visible"), QStringLiteral("True")), false);
    readPlace(objIni, section);
    readValue(objIni, section);
    readChoices(objIni, section);
    m_data = m_defaultData;
    if (m_type == ItemType::Multi || m_type == ItemType::Input)
        readTables();
}

// A number field of the section; a text that is no number counts as 0 and is noted.
int clsData::number(const QString& key, const QString& text)
{
    if (!platform::parseInt32(text))
        m_faults << QStringLiteral("%1: \"%2\" is not a whole number").arg(key, text.left(kMaxQuoted));
    return m_library->toLong(text, 0);
}

// The fields of a comma-separated value; fields that are missing take the default's and are noted.
QStringList clsData::fields(const QString& key, const QString& text, const QString& defaultText)
{
    QStringList list = text.split(u',');
    const QStringList defaults = defaultText.split(u',');
    if (list.size() < defaults.size())
        m_faults << QStringLiteral("%1: %2 of %3 fields").arg(key).arg(list.size()).arg(defaults.size());
    for (qsizetype i = list.size(); i < defaults.size(); ++i)
        list << defaults[i];
    return list;
}

void clsData::readPlace(clsINI& ini, const QString& section)
{
    const QString lengthKey = QStringLiteral("DataLen");
    const QString maskKey = QStringLiteral("BitMask");
    const QString cellKey = QStringLiteral("CellData");
    m_enabled = ini.GetIniData(section, QStringLiteral("Enabled"), QStringLiteral("True"));
    m_readOnly = m_library->toBoolean(ini.GetIniData(section, QStringLiteral("ReadOnly"), QString(), true), false);
    m_address = ini.GetIniData(section, QStringLiteral("KXAddress"), QString());
    m_dataLen = number(lengthKey, ini.GetIniData(section, lengthKey, QStringLiteral("0")));
    m_bitMask = number(maskKey, ini.GetIniData(section, maskKey, QStringLiteral("0")));
    const QString cellDefault = QStringLiteral("%1,1,vbWindowBackground,vbWindowText").arg(m_number);
    const QStringList cell = fields(cellKey, ini.GetIniData(section, cellKey, cellDefault), cellDefault);
    m_row = number(cellKey, cell[0]);
    m_col = number(cellKey, cell[1]);
    m_backColorName = cell[2];
    m_foreColorName = cell[3];
    m_readSection = ini.GetIniData(section, QStringLiteral("CommRaedSection"), QString());
    m_writeSection = ini.GetIniData(section, QStringLiteral("CommWriteSection"), QString());
}

void clsData::readValue(clsINI& ini, const QString& section)
{
    const QString bitKey = QStringLiteral("BitData");
    const QString infoKey = QStringLiteral("DataInfo");
    m_typeName = ini.GetIniData(section, QStringLiteral("CellType"), QStringLiteral("Data"));
    m_type = typeOf(m_typeName);
    m_bitOnCaption = ini.GetIniData(section, QStringLiteral("BitCaptionOn"), QStringLiteral("On"));
    m_bitOffCaption = ini.GetIniData(section, QStringLiteral("BitCaptionOff"), QStringLiteral("Off"));
    const QString bitDefault = QStringLiteral("1,0");
    const QStringList bit = fields(bitKey, ini.GetIniData(section, bitKey, bitDefault), bitDefault);
    m_bitOn = number(bitKey, bit[0]);
    m_bitOff = number(bitKey, bit[1]);
    // The last two fields are not used; a definition may leave the seventh out.
    const QString infoDefault = QStringLiteral("0,-100,100,<=,<=,0");
    const QStringList info =
        fields(infoKey, ini.GetIniData(section, infoKey, QStringLiteral("0,-100,100,<=,<=,0,10")), infoDefault);
    m_decimalsText = info[0];
    m_limits = {info[1], info[2], info[1], info[2], info[3], info[4]};
}

void clsData::readChoices(clsINI& ini, const QString& section)
{
    const QString choices = ini.GetIniData(section, QStringLiteral("ComboStrings"), QString());
    m_comboStrings = m_library->tranStr(choices).split(kSeparator);
    // A translation with another number of choices would show wrong ones.
    if (m_comboStrings.size() != choices.split(kSeparator).size())
        m_comboStrings = choices.split(kSeparator);
    m_comboDatas = ini.GetIniData(section, QStringLiteral("ComboDatas"), QString()).split(kSeparator);
    if (m_comboStrings.size() != m_comboDatas.size())
        m_faults << QStringLiteral("ComboStrings: %1 choices for %2 values")
                        .arg(m_comboStrings.size())
                        .arg(m_comboDatas.size());
    m_multiSection = ini.GetIniData(section, QStringLiteral("MultiSelectSection"), QString());
    m_inputCSection = ini.GetIniData(section, QStringLiteral("InputCSelectSection"), QString());
    m_inputKSection = ini.GetIniData(section, QStringLiteral("InputKSelectSection"), QString());
    m_defaultData = ini.GetIniData(section, QStringLiteral("DefaultData"), QString());
}

void clsData::readTables()
{
    if (m_library->context().eventLog != nullptr)
        m_library->context().eventLog->LogWrite(QStringLiteral("ReadMulti   :") + m_tag);
    const QString folder = m_library->getIniFilePath(QString());
    if (!m_library->FileExists(folder + u'\\' + kTablesFile)) {
        m_owner->noteMissingTables();
        return;
    }
    clsINI tables(m_library->context());
    tables.setIniPath(folder);
    tables.setIniFileName(kTablesFile);
    m_multiTable.load(tables, m_multiSection, *m_library);
    m_inputCTable.load(tables, m_inputCSection, *m_library);
    m_inputKTable.load(tables, m_inputKSection, *m_library);
}

platform::CellType clsData::CellType() const
{
    if (m_typeName == u"Bit")
        return platform::CellType::Button;
    if (m_typeName == u"Data")
        return platform::CellType::Edit;
    if (m_typeName == u"Combo")
        return platform::CellType::ComboBox;
    return platform::CellType::StaticText;
}

bool clsData::showsStoredText() const
{
    return m_type == ItemType::String || (m_type == ItemType::Data && m_typeName != u"Data");
}

QString clsData::ComboString() const
{
    return m_comboStrings.join(u'\t');
}

bool clsData::checkMulti() const
{
    return !m_multiSection.isEmpty() || !m_inputCSection.isEmpty() || !m_inputKSection.isEmpty();
}

QString clsData::VData() const
{
    if (showsStoredText())
        return m_data;
    switch (m_type) {
    case ItemType::Bit:
        return sameNumber(m_data, QString::number(m_bitOn)) ? m_bitOnCaption : m_bitOffCaption;
    case ItemType::Combo:
        return comboDisplay();
    case ItemType::Multi:
        return m_multiTable.nameOf(m_data);
    case ItemType::Input:
        return inputTable().nameOf(m_data);
    case ItemType::Data:
    case ItemType::String:
        break;
    }
    return displayOf(m_data);
}

QString clsData::displayOf(const QString& storedText) const
{
    const int places = getDecimals();
    return m_library->ExFormat(scaledDown(m_library->toSingle(storedText, 0.0F), places), formatFor(places));
}

void clsData::setVData(const QString& displayValue)
{
    Edit = EditState::kChanged;
    m_known = true;
    m_holdsDefault = false;
    if (m_type != ItemType::Data)
        return;
    m_data = storedOf(displayValue);
}

// The controller holds whole numbers in one and two bytes; four hold the number as it was entered.
QString clsData::storedOf(const QString& displayValue) const
{
    const int places = getDecimals();
    if (powerOfTen(places) == 0.0F)
        return QStringLiteral("0");
    const bool isWhole = m_dataLen == 1 || m_dataLen == 2;
    return platform::scaledText(displayValue, places, isWhole).value_or(QStringLiteral("0"));
}

void clsData::setData(const QString& storedValue)
{
    m_data = storedValue;
    m_known = true;
    m_holdsDefault = false;
    if (m_type == ItemType::Multi)
        m_owner->multiSet().apply(*this, m_multiTable, storedValue);
    else if (m_type == ItemType::Input)
        m_owner->multiSet().apply(*this, inputTable(), storedValue);
}

ItemState clsData::state() const
{
    return {m_data, m_known, m_holdsDefault, Edit, m_limits.currentLower, m_limits.currentUpper};
}

void clsData::restore(const ItemState& state)
{
    m_data = state.data;
    m_known = state.known;
    m_holdsDefault = state.holdsDefault;
    Edit = state.edit;
    m_limits.currentLower = state.currentLower;
    m_limits.currentUpper = state.currentUpper;
}

const ChoiceTable& clsData::inputTable() const
{
    return m_owner->unitSwitch() != 0 ? m_inputKTable : m_inputCTable;
}

QString clsData::LimitL() const
{
    return ItemLimits(*this, *m_owner).lower();
}

QString clsData::LimitH() const
{
    return ItemLimits(*this, *m_owner).upper();
}

QString clsData::SignL() const
{
    return ItemLimits(*this, *m_owner).lowerSign();
}

QString clsData::SignH() const
{
    return ItemLimits(*this, *m_owner).upperSign();
}

QString clsData::comboDisplay() const
{
    QString shown;
    for (qsizetype i = 0; i < m_comboDatas.size(); ++i) {
        if (sameNumber(m_comboDatas[i], m_data))
            shown = m_comboStrings.value(i);
    }
    return shown;
}

bool clsData::isAmongChoices() const
{
    const bool isChoice = m_type == ItemType::Combo || m_type == ItemType::Multi || m_type == ItemType::Input;
    return !isChoice || !VData().isEmpty();
}

int clsData::ComboIdx() const
{
    return static_cast<int>(std::max<qsizetype>(m_comboDatas.indexOf(m_data), 0));
}

void clsData::setComboIdx(int index)
{
    if (index >= 0 && index < m_comboDatas.size())
        setData(m_comboDatas[index]);
}

std::vector<ItemChoice> clsData::choices() const
{
    std::vector<ItemChoice> choices;
    if (m_type == ItemType::Bit)
        choices = {{QString::number(m_bitOn), m_bitOnCaption}, {QString::number(m_bitOff), m_bitOffCaption}};
    for (qsizetype i = 0; m_type == ItemType::Combo && i < m_comboDatas.size(); ++i)
        choices.push_back({m_comboDatas[i], m_comboStrings.value(i)});
    if (m_type != ItemType::Multi && m_type != ItemType::Input)
        return choices;
    const ChoiceTable& table = m_type == ItemType::Multi ? m_multiTable : inputTable();
    for (const ChoiceTable::Entry& entry : table.entries())
        choices.push_back({entry.data.value(1), entry.names.value(0)});
    return choices;
}

QString clsData::ButtonCaption() const
{
    return m_library->toLong(m_data, 0) != 0 ? m_bitOnCaption : m_bitOffCaption;
}

int clsData::getDecimals() const
{
    // A definition whose places lead back to this item, or through a long chain of others, would never end: it is cut
    // here.
    const clsKX::ReferenceStep step(*m_owner);
    if (m_resolving || step.isTooDeep()) {
        m_owner->noteCircle(*this);
        return 0;
    }
    const QScopedValueRollback<bool> guard(m_resolving, true);
    bool decided = false;
    const int byTag = decimalsByTag(decided);
    return decided ? byTag : decimalsByReference();
}

int clsData::decimalsByTag(bool& decided) const
{
    decided = true;
    if (m_tag == u"VQ1DB" || m_tag == u"VQ2DB" || m_tag == u"VQ3DB")
        return m_owner->getEVDBDot(m_tag.at(2).digitValue());
    const bool isRange = m_tag == u"VQLIZS" || m_tag == u"VQLIZL" || m_tag == u"RANGEL" || m_tag == u"RANGEH";
    if (isRange && m_owner->hasVoltageRange())
        return kVoltagePlaces;
    if (m_tag.size() == 5 && m_tag.contains(u"VQAL"))
        return m_owner->getEVDot(m_library->toLong(m_tag.mid(4), 0));
    decided = false;
    return 0;
}

QString clsData::decimalsReference() const
{
    static const QString kDot = QStringLiteral("DOT");
    return m_decimalsText.contains(kDot) ? m_decimalsText.mid(kDot.size()) : QString();
}

int clsData::decimalsByReference() const
{
    const QString tag = decimalsReference();
    if (tag.isEmpty())
        return m_library->toLong(m_decimalsText, 0);
    const clsData* reference = m_owner->getDataByTag(tag);
    if (reference == nullptr)
        return 0;
    const int places = m_library->toLong(reference->VData(), 0);
    const bool atLeastOne = m_tag == u"VQBIA" || m_tag == u"VQRBIA";
    return places == 0 && atLeastOne ? 1 : places;
}

QString clsData::getFormatStr() const
{
    return formatFor(getDecimals());
}

platform::ColorRef clsData::BackColor() const
{
    const qint32 fallback = m_library->StrToColor(QStringLiteral("vbWindowBackground"), 0xFFFFFF);
    return static_cast<platform::ColorRef>(m_library->StrToColor(m_backColorName, fallback));
}

platform::ColorRef clsData::SprForeColor() const
{
    if (Edit == EditState::kChanged)
        return kChangedColor;
    const qint32 fallback = m_library->StrToColor(QStringLiteral("vbWindowText"), 0);
    return static_cast<platform::ColorRef>(m_library->StrToColor(m_foreColorName, fallback));
}
