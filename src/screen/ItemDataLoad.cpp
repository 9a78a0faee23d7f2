// How an item reads its section of the screen file.
#include "ItemData.h"
#include "Numbers.h"
#include "clsINI.h"
#include "clsLibrary.h"

namespace {

constexpr int kMaxQuoted = 40; // characters of a faulty text that are quoted
const QString kChoiceSeparator = QStringLiteral("vbTab");
const QString kTablesFile = QStringLiteral("MultiSelect.ini");

ItemType typeOf(const QString& name)
{
    static const QStringList names{QStringLiteral("Bit"),   QStringLiteral("Data"),  QStringLiteral("Combo"),
                                   QStringLiteral("Multi"), QStringLiteral("Input"), QStringLiteral("String")};
    const auto index = names.indexOf(name);
    return index < 0 ? ItemType::Data : static_cast<ItemType>(index);
}

} // namespace

void ItemData::load(clsINI& objIni, int number, clsLibrary* objLib, bool bUse)
{
    m_number = number;
    m_library = objLib;
    const QString section = definitionSection();
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

void ItemData::addFinding(const QString& key, const QString& fault, const QString& remedy)
{
    m_findings.push_back({{}, definitionSection(), key, fault, remedy});
}

// A number field of the section; a text that is no number counts as 0 and is noted.
int ItemData::number(const QString& key, const QString& text)
{
    if (!platform::parseInt32(text))
        addFinding(key, QStringLiteral("\"%1\" is not a whole number").arg(text.left(kMaxQuoted)),
                   QStringLiteral("write a decimal number, or a hexadecimal one with &h"));
    return m_library->toLong(text, 0);
}

// The fields of a comma-separated value; fields that are missing take the default's and are noted.
QStringList ItemData::fields(const QString& key, const QString& text, const QString& defaultText)
{
    QStringList list = text.split(u',');
    const QStringList defaults = defaultText.split(u',');
    if (list.size() < defaults.size())
        addFinding(key, QStringLiteral("%1 of %2 fields").arg(list.size()).arg(defaults.size()),
                   QStringLiteral("give all fields, separated by commas"));
    for (qsizetype i = list.size(); i < defaults.size(); ++i)
        list << defaults[i];
    return list;
}

void ItemData::readPlace(clsINI& ini, const QString& section)
{
    const QString lengthKey = QStringLiteral("DataLen");
    const QString maskKey = QStringLiteral("BitMask");
    const QString cellKey = QStringLiteral("CellData");
    m_enabled = ini.GetIniData(section, QStringLiteral("Enabled"), QStringLiteral("True"));
    m_readOnly = m_library->toBoolean(ini.GetIniData(section, QStringLiteral("ReadOnly"), QString(), true), false);
    readClass(ini, section);
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

void ItemData::readClass(clsINI& ini, const QString& section)
{
    const QString key = QStringLiteral("Class");
    const QString name = ini.GetIniData(section, key, parameterClassName(ParameterClass::Setting), true);
    const auto known = parameterClassOf(name);
    if (!known)
        addFinding(key, QStringLiteral("\"%1\" is no class").arg(name.left(kMaxQuoted)),
                   QStringLiteral("write setting, calibration, line, command or measured"));
    m_class = known.value_or(ParameterClass::Setting);
}

void ItemData::readValue(clsINI& ini, const QString& section)
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

void ItemData::readChoices(clsINI& ini, const QString& section)
{
    const QString choices = ini.GetIniData(section, QStringLiteral("ComboStrings"), QString());
    m_comboStrings = m_library->tranStr(choices).split(kChoiceSeparator);
    // A translation with another number of choices would show wrong ones.
    if (m_comboStrings.size() != choices.split(kChoiceSeparator).size())
        m_comboStrings = choices.split(kChoiceSeparator);
    m_comboDatas = ini.GetIniData(section, QStringLiteral("ComboDatas"), QString()).split(kChoiceSeparator);
    if (m_comboStrings.size() != m_comboDatas.size())
        addFinding(QStringLiteral("ComboStrings"),
                   QStringLiteral("%1 choices for %2 values").arg(m_comboStrings.size()).arg(m_comboDatas.size()),
                   QStringLiteral("give as many texts as values"));
    m_multiSection = ini.GetIniData(section, QStringLiteral("MultiSelectSection"), QString());
    m_inputCSection = ini.GetIniData(section, QStringLiteral("InputCSelectSection"), QString());
    m_inputKSection = ini.GetIniData(section, QStringLiteral("InputKSelectSection"), QString());
    m_defaultData = ini.GetIniData(section, QStringLiteral("DefaultData"), QString());
}

void ItemData::readTables()
{
    m_library->context().eventLog.get().LogWrite(QStringLiteral("ReadMulti   :") + m_tag);
    const QString folder = m_library->getIniFilePath(QString());
    if (!m_library->FileExists(folder + u'\\' + kTablesFile)) {
        m_lacksTables = true;
        return;
    }
    clsINI tables(m_library->context());
    tables.setIniPath(folder);
    tables.setIniFileName(kTablesFile);
    m_multiTable.load(tables, m_multiSection, *m_library);
    m_inputCTable.load(tables, m_inputCSection, *m_library);
    m_inputKTable.load(tables, m_inputKSection, *m_library);
}
