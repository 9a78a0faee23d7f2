#include "clsData.h"

#include "Numbers.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int kMaxFormatPlaces = 20;                   // more places than any number has digits
constexpr int kVoltagePlaces = 3;                      // of a voltage input, in volts
constexpr platform::ColorRef kChangedColor = 0xFF0000; // blue

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

void clsData::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
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
    if (m_type == ItemType::Bit)
        return sameNumber(m_data, QString::number(m_bitOn)) || sameNumber(m_data, QString::number(m_bitOff));
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
