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
constexpr platform::ColorRef kChangedColor = 0xFF0000; // blue
const QString kSeparator = QStringLiteral("vbTab");
const QString kVoltageMark = QStringLiteral("5V");

ItemType typeOf(const QString& name)
{
    static const QStringList names{QStringLiteral("Bit"),   QStringLiteral("Data"),  QStringLiteral("Combo"),
                                   QStringLiteral("Multi"), QStringLiteral("Input"), QStringLiteral("String")};
    const auto index = names.indexOf(name);
    return index < 0 ? ItemType::Data : static_cast<ItemType>(index);
}

// The fields of a comma-separated value; fields that are missing or left empty take the default's.
QStringList fieldsOf(const QString& text, const QString& defaultText)
{
    QStringList fields = text.split(u',');
    const QStringList defaults = defaultText.split(u',');
    for (qsizetype i = 0; i < defaults.size(); ++i) {
        if (i >= fields.size())
            fields << defaults[i];
    }
    return fields;
}

bool sameNumber(const QString& left, const QString& right)
{
    const auto a = platform::parseDouble(left);
    const auto b = platform::parseDouble(right);
    return a && b && *a == *b;
}

// The value divided by 10 to the power of places, in single precision; 0 for other counts than 0 to 5.
float scaledDown(float value, int places)
{
    static constexpr float kDivisors[] = {1.0F, 10.0F, 100.0F, 1000.0F, 10000.0F, 100000.0F};
    return places < 0 || places > 5 ? 0.0F : value / kDivisors[places];
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
    m_blockNo = objLib->toLong(objIni.GetIniData(section, QStringLiteral("BlockNo"), QStringLiteral("0")), 0);
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

void clsData::readPlace(clsINI& ini, const QString& section)
{
    m_enabled = ini.GetIniData(section, QStringLiteral("Enabled"), QStringLiteral("True"));
    m_address = ini.GetIniData(section, QStringLiteral("KXAddress"), QString());
    m_dataLen = m_library->toLong(ini.GetIniData(section, QStringLiteral("DataLen"), QStringLiteral("0")), 0);
    m_bitMask = m_library->toLong(ini.GetIniData(section, QStringLiteral("BitMask"), QStringLiteral("0")), 0);
    const QString cellDefault = QStringLiteral("%1,1,vbWindowBackground,vbWindowText").arg(m_number);
    const QStringList cell = fieldsOf(ini.GetIniData(section, QStringLiteral("CellData"), cellDefault), cellDefault);
    m_row = m_library->toLong(cell[0], 0);
    m_col = m_library->toLong(cell[1], 0);
    m_backColorName = cell[2];
    m_foreColorName = cell[3];
    m_readSection = ini.GetIniData(section, QStringLiteral("CommRaedSection"), QString());
    m_writeSection = ini.GetIniData(section, QStringLiteral("CommWriteSection"), QString());
}

void clsData::readValue(clsINI& ini, const QString& section)
{
    m_typeName = ini.GetIniData(section, QStringLiteral("CellType"), QStringLiteral("Data"));
    m_type = typeOf(m_typeName);
    m_bitOnCaption = ini.GetIniData(section, QStringLiteral("BitCaptionOn"), QStringLiteral("On"));
    m_bitOffCaption = ini.GetIniData(section, QStringLiteral("BitCaptionOff"), QStringLiteral("Off"));
    const QString bitDefault = QStringLiteral("1,0");
    const QStringList bit = fieldsOf(ini.GetIniData(section, QStringLiteral("BitData"), bitDefault), bitDefault);
    m_bitOn = m_library->toLong(bit[0], 0);
    m_bitOff = m_library->toLong(bit[1], 0);
    const QString infoDefault = QStringLiteral("0,-100,100,<=,<=,0,10");
    m_dataInfo = fieldsOf(ini.GetIniData(section, QStringLiteral("DataInfo"), infoDefault), infoDefault);
}

void clsData::readChoices(clsINI& ini, const QString& section)
{
    m_comboStrings = ini.GetIniData(section, QStringLiteral("ComboStrings"), QString()).split(kSeparator);
    m_comboDatas = ini.GetIniData(section, QStringLiteral("ComboDatas"), QString()).split(kSeparator);
    m_multiSection = ini.GetIniData(section, QStringLiteral("MultiSelectSection"), QString());
    m_inputCSection = ini.GetIniData(section, QStringLiteral("InputCSelectSection"), QString());
    m_inputKSection = ini.GetIniData(section, QStringLiteral("InputKSelectSection"), QString());
    m_defaultData = ini.GetIniData(section, QStringLiteral("DefaultData"), QString());
}

void clsData::readTables()
{
    if (m_library->context().eventLog != nullptr)
        m_library->context().eventLog->LogWrite(QStringLiteral("ReadMulti   :") + m_tag);
    clsINI tables(m_library->context());
    tables.setIniPath(m_library->getIniFilePath(QString()));
    tables.setIniFileName(QStringLiteral("MultiSelect.ini"));
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
        return (m_owner->unitSwitch() != 0 ? m_inputKTable : m_inputCTable).nameOf(m_data);
    case ItemType::Data:
    case ItemType::String:
        break;
    }
    return scaledDisplay();
}

QString clsData::scaledDisplay() const
{
    const float stored = m_library->toSingle(m_data, 0.0F);
    const int places = getDecimals();
    const QString pattern = getFormatStr();
    return m_library->ExFormat(scaledDown(stored, places), pattern);
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

int clsData::ComboIdx() const
{
    return static_cast<int>(std::max<qsizetype>(m_comboDatas.indexOf(m_data), 0));
}

QString clsData::ButtonCaption() const
{
    return m_library->toLong(m_data, 0) != 0 ? m_bitOnCaption : m_bitOffCaption;
}

int clsData::getDecimals() const
{
    // A definition whose places lead back to this item would never end: the circle is cut here.
    if (m_resolving)
        return 0;
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
    if (m_tag == u"VQLIZS" || m_tag == u"VQLIZL" || m_tag == u"RANGEL" || m_tag == u"RANGEH") {
        const clsData* range = m_owner->getDataByTag(QStringLiteral("PQRNO"));
        if (range != nullptr && range->VData().contains(kVoltageMark))
            return 3;
    }
    if (m_tag.size() == 5 && m_tag.contains(u"VQAL"))
        return m_owner->getEVDot(m_library->toLong(m_tag.mid(4), 0));
    decided = false;
    return 0;
}

int clsData::decimalsByReference() const
{
    static const QString kDot = QStringLiteral("DOT");
    const QString& text = m_dataInfo[0];
    if (!text.contains(kDot))
        return m_library->toLong(text, 0);
    const clsData* reference = m_owner->getDataByTag(text.mid(kDot.size()));
    if (reference == nullptr)
        return 0;
    const int places = m_library->toLong(reference->VData(), 0);
    const bool atLeastOne = m_tag == u"VQBIA" || m_tag == u"VQRBIA";
    return places == 0 && atLeastOne ? 1 : places;
}

QString clsData::getFormatStr() const
{
    const int places = std::min(getDecimals(), kMaxFormatPlaces);
    return places <= 0 ? QStringLiteral("#0") : QStringLiteral("#0.") + QString(places, u'0');
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
