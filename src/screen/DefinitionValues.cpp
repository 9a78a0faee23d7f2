// Default values and limits of a definition: what an item can hold, and what its limits let in.
#include "DefinitionFindings.h"
#include "Numbers.h"
#include "clsINI.h"
#include "clsKX.h"
#include "clsLibrary.h"

namespace {

constexpr int kMaxPoint = 3; // decimal places that a voltage input can be given
const QString kDefaultKey = QStringLiteral("DefaultData");
const QString kLimitsKey = QStringLiteral("DataInfo");

bool holds(const QString& low, const QString& sign, const QString& high)
{
    const auto a = platform::parseDouble(low);
    const auto b = platform::parseDouble(high);
    return a && b && (sign == u"<" ? *a < *b : sign == u"<=" && *a <= *b);
}

bool fitsMemory(const clsData& item, const QString& stored)
{
    const auto value = platform::parseDouble(stored);
    if (!value || item.DataLen() > 2)
        return value.has_value();
    return item.DataLen() == 1 ? *value >= 0 && *value <= 255 : *value >= -32768 && *value <= 32767;
}

void checkNumber(DefinitionFindings& findings, const clsData& item)
{
    const QString low = findings.kx().checkTag(item.LimitL());
    const QString high = findings.kx().checkTag(item.LimitH());
    if (!holds(low, item.SignL(), item.VData()) || !holds(item.VData(), item.SignH(), high))
        findings.addToItem(item, kDefaultKey,
                           QStringLiteral("has a default outside its limits: %1 %2 %3 %4 %5")
                               .arg(low, item.SignL(), item.VData(), item.SignH(), high),
                           QStringLiteral("give one within the limits"));
    if (!fitsMemory(item, item.Data()))
        findings.addToItem(
            item, kDefaultKey,
            QStringLiteral("has the default %1, which does not fit %2 bytes").arg(item.Data()).arg(item.DataLen()),
            QStringLiteral("give a smaller one"));
}

// The items that follow a choice without a cell hold what it sets.
void checkFollowers(DefinitionFindings& findings, clsData& item)
{
    item.setData(item.Data());
    for (const auto& other : findings.kx().items()) {
        if (!other->Visible() && other->Data() != other->DefData())
            findings.addToItem(*other, kDefaultKey,
                               QStringLiteral("has the default %1, but %2 sets it to %3")
                                   .arg(other->DefData(), item.Key(), other->Data()),
                               QStringLiteral("give what the selection table sets"));
    }
}

void checkChoice(DefinitionFindings& findings, clsData& item)
{
    const bool isBit = item.MType() == ItemType::Bit;
    const int value = item.Data().toInt();
    if (item.VData().isEmpty() || !fitsMemory(item, item.Data()) ||
        (isBit && value != item.BitOn() && value != item.BitOff()))
        findings.addToItem(item, kDefaultKey, QStringLiteral("has the default %1, which is no choice").arg(item.Data()),
                           QStringLiteral("give the stored value of a choice"));
    if (item.MType() == ItemType::Input)
        checkFollowers(findings, item);
}

void checkItemLimits(DefinitionFindings& findings, const clsData& item, const QString& state)
{
    const clsKX& kx = findings.kx();
    const QString low = kx.checkTag(item.LimitL());
    const QString high = kx.checkTag(item.LimitH());
    if (findings.concern(item, kLimitsKey)) // the same with every range would be the same fault
        return;
    if (!fitsMemory(item, item.storedOf(low)) || !fitsMemory(item, item.storedOf(high)))
        findings.addToItem(item, kLimitsKey,
                           QStringLiteral("has limits %1 and %2, which do not fit %3 bytes%4")
                               .arg(low, high)
                               .arg(item.DataLen())
                               .arg(state),
                           QStringLiteral("give narrower limits"));
    if (!item.Key().startsWith(u"VQAL"))
        return;
    for (const char* scale : {"TAGVQLIL", "TAGVQLIH"}) {
        const QString end = kx.checkTag(QLatin1String(scale));
        if (!end.isEmpty() && !(holds(low, item.SignL(), end) && holds(end, item.SignH(), high)))
            findings.addToItem(item, kLimitsKey,
                               QStringLiteral("has limits %1 and %2, which leave out %3%4").arg(low, high, end, state),
                               QStringLiteral("give limits that hold the whole scale"));
    }
}

// state: which settings the limits come from, as the end of a sentence.
void checkAllLimits(DefinitionFindings& findings, const QString& state)
{
    for (const auto& item : findings.kx().items()) {
        if (item->MType() == ItemType::Data && findings.kx().isWritable(*item) && item->Visible())
            checkItemLimits(findings, *item, state);
    }
}

std::vector<ChoiceTable::Entry> entriesOf(const clsLibrary& library, const QString& section)
{
    clsINI ini(library.context());
    ini.setIniPath(library.getIniFilePath(QString()));
    ini.setIniFileName(DefinitionFindings::tablesFile());
    ChoiceTable table;
    table.load(ini, section, library);
    return table.entries();
}

void setEntry(clsKX& kx, const ChoiceTable::Entry& entry, const QString& tag)
{
    for (const EntrySetting& setting : entry.settingsFor(tag)) {
        if (setting.isDisplayValue)
            kx.setVData(setting.tag, setting.value, false);
        else
            kx.setData(setting.tag, setting.value, false);
    }
}

void checkRange(DefinitionFindings& findings, const QString& name, int unit)
{
    checkAllLimits(findings, QStringLiteral(", with the range %1 of unit %2").arg(name).arg(unit));
    clsData* point = findings.kx().getDataByTag(QStringLiteral("SVDOT"));
    for (int places = 0; point != nullptr && findings.kx().hasVoltageRange() && places <= kMaxPoint; ++places) {
        point->setData(QString::number(places));
        checkAllLimits(findings, QStringLiteral(", with the range %1 and decimal point %2").arg(name).arg(places));
    }
}

void checkRanges(DefinitionFindings& findings, const clsData& range)
{
    clsKX& kx = findings.kx();
    for (const int unit : {0, 1}) {
        kx.setUnitSwitch(unit);
        const QString table = unit == 0 ? range.ICSection() : range.IKSection();
        for (const ChoiceTable::Entry& entry : entriesOf(kx.library(), table)) {
            setEntry(kx, entry, range.Key());
            checkRange(findings, entry.names.value(0), unit);
        }
    }
    kx.setUnitSwitch(0);
}

} // namespace

void definitionRules::checkDefaults(DefinitionFindings& findings)
{
    for (const auto& item : findings.kx().items()) {
        if (item->DefData().isEmpty() || item->MType() == ItemType::String)
            continue;
        if (item->MType() == ItemType::Data)
            checkNumber(findings, *item);
        else
            checkChoice(findings, *item);
    }
}

void definitionRules::checkLimits(DefinitionFindings& findings)
{
    checkAllLimits(findings, QString());
    for (const auto& item : findings.kx().items()) {
        if (item->MType() == ItemType::Input)
            checkRanges(findings, *item);
    }
}
