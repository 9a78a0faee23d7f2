#include "DefinitionCheck.h"

#include "ModelCatalogue.h"
#include "Numbers.h"
#include "clsINI.h"
#include "clsLog.h"

#include <QFile>
#include <algorithm>
#include <vector>

namespace {

constexpr int kValueBuffer = 512;
constexpr int kMaxReadBytes = 120; // that one reply of the controller can carry

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

} // namespace

QStringList DefinitionCheck::run(int number, const QString& modelString)
{
    m_findings.clear();
    const platform::ProfileStore::Batch quick(m_context.machine.profiles); // a file is looked at once
    m_screen = path(ModelCatalogue(m_library).entry(number).screenFile);
    m_kx.setModel(modelString);
    loadNoted(number, modelString);
    m_tags.clear();
    for (const auto& item : m_kx.items())
        m_tags.insert(item->Key());
    for (int i = 0; i < m_kx.ColAdr().count(); ++i) {
        if (!m_kx.ColAdr().at(i).m_bModbus)
            checkImage(m_kx.ColAdr().at(i));
    }
    checkReferences();
    for (const clsBlock* block : m_kx.BlockCol())
        checkText(QStringLiteral("block %1").arg(block->m_lNo), block->m_sName);
    for (const auto& item : m_kx.items()) {
        checkTexts(*item);
        if (item->MType() == ItemType::Data)
            checkNumber(*item);
        else if (item->MType() != ItemType::String)
            checkChoice(*item);
    }
    for (const auto& item : m_kx.items()) {
        if (item->MType() == ItemType::Input)
            checkRanges(*item);
    }
    return m_findings;
}

// The limits hold with every input range, in both units and with every decimal point that may go with it.
void DefinitionCheck::checkRanges(clsData& range)
{
    clsData* point = m_kx.getDataByTag(QStringLiteral("SVDOT"));
    for (const int unit : {0, 1}) {
        clsINI ini(m_context);
        ini.setIniPath(m_library.getIniFilePath(QString()));
        ini.setIniFileName(QStringLiteral("MultiSelect.ini"));
        ChoiceTable table;
        table.load(ini, unit == 0 ? range.ICSection() : range.IKSection(), m_library);
        m_kx.setUnitSwitch(unit);
        for (const ChoiceTable::Entry& entry : table.entries()) {
            for (const EntrySetting& one : entry.settingsFor(range.Key())) {
                if (one.isDisplayValue)
                    m_kx.setVData(one.tag, one.value, false);
                else
                    m_kx.setData(one.tag, one.value, false);
            }
            checkLimits(QStringLiteral("%1, unit %2").arg(entry.names.value(0)).arg(unit));
            for (int places = 0; point != nullptr && m_kx.hasVoltageRange() && places <= 3; ++places) {
                point->setData(QString::number(places));
                checkLimits(QStringLiteral("%1, %2 places").arg(entry.names.value(0)).arg(places));
            }
        }
    }
    m_kx.setUnitSwitch(0);
}

void DefinitionCheck::checkLimits(const QString& range)
{
    const QString ends[] = {m_kx.checkTag(QStringLiteral("TAGVQLIL")), m_kx.checkTag(QStringLiteral("TAGVQLIH"))};
    for (const auto& item : m_kx.items()) {
        if (item->MType() != ItemType::Data || item->isReadOnly() || !item->Visible())
            continue;
        const QString low = m_kx.checkTag(item->LimitL());
        const QString high = m_kx.checkTag(item->LimitH());
        if (!fitsMemory(*item, item->storedOf(low)) || !fitsMemory(*item, item->storedOf(high)))
            find(item->Key(), QStringLiteral("limits %1 and %2 do not fit %3 bytes: %4")
                                  .arg(low, high)
                                  .arg(item->DataLen())
                                  .arg(range));
        const bool isAlarm = item->Key().startsWith(u"VQAL");
        for (const QString& end : ends) {
            if (isAlarm && !(holds(low, item->SignL(), end) && holds(end, item->SignH(), high)))
                find(item->Key(), QStringLiteral("limits %1 and %2 leave out %3: %4").arg(low, high, end, range));
        }
    }
}

// What the program itself finds wrong goes to the error log.
void DefinitionCheck::loadNoted(int number, const QString& modelString)
{
    clsLog log(m_context.machine);
    log.setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
    log.setLogFileName(QStringLiteral("Check.log"));
    m_kx.Logs(log, noLog());
    m_kx.load(number, &m_library, modelString);
    m_kx.Logs(noLog(), noLog());
    QFile file(m_context.machine.paths.toMachine(QStringLiteral("C:\\Vorlant\\Log\\Check.log")));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QStringList lines = m_context.machine.codePage.toText(file.readAll().mid(clsLog::kHeaderBytes)).split(u'\n');
    for (const QString& line : lines) {
        if (!line.trimmed().isEmpty())
            m_findings << line.mid(clsLog::kStampBytes).trimmed();
    }
    file.remove();
}

QString DefinitionCheck::path(const QString& definitionFile) const
{
    return m_context.machine.paths.toMachine(m_library.getIniFilePath(QString()) + u'\\' + definitionFile);
}

QString DefinitionCheck::key(const clsData& item, const char* name) const
{
    const QString section = QStringLiteral("Datas%1").arg(item.number());
    return m_context.machine.profiles.read(m_screen, section, QLatin1String(name), QString(), kValueBuffer).text;
}

// The items of an image fill it without a gap and share no bits.
void DefinitionCheck::checkImage(const clsKXAdr& image)
{
    const int start = image.StartAddress().toInt(nullptr, 16);
    const int size = static_cast<int>(image.getOrgData().size()) - 1;
    if (size < 1 || size > kMaxReadBytes)
        find(image.Section(), QStringLiteral("%1 bytes in one read").arg(size));
    std::vector<int> used(static_cast<size_t>(std::max(size, 0)), 0);
    for (const auto& item : m_kx.items()) {
        if (item->RSection() != image.Section())
            continue;
        const int offset = item->Address().toInt(nullptr, 16) - start;
        if (offset < 0 || item->DataLen() < 1 || offset + item->DataLen() > size) {
            find(item->Key(), QStringLiteral("outside the memory of its section"));
            continue;
        }
        const int bits = item->MType() == ItemType::Bit ? item->BitMask() : 0xFF;
        for (int i = offset; i < offset + item->DataLen(); ++i) {
            int& byte = used[static_cast<size_t>(i)];
            if (bits == 0 || (byte & bits) != 0)
                find(item->Key(), QStringLiteral("shares memory with another item"));
            byte |= bits;
        }
    }
    if (std::find(used.begin(), used.end(), 0) != used.end())
        find(image.Section(), QStringLiteral("has bytes of no item"));
}

void DefinitionCheck::checkTag(const QString& where, const QString& tag)
{
    if (!m_tags.contains(tag))
        find(where, QStringLiteral("no item %1").arg(tag));
}

void DefinitionCheck::checkReferences()
{
    for (const auto& item : m_kx.items()) {
        const QString decimals = key(*item, "DataInfo").section(u',', 0, 0);
        if (decimals.startsWith(u"DOT"))
            checkTag(item->Key(), decimals.mid(3));
        for (const QString& limit : {item->limitTexts().definedLower, item->limitTexts().definedUpper}) {
            if (limit.startsWith(u"TAG"))
                checkTag(item->Key(), limit.mid(3));
        }
        if (m_kx.ColAdr().find(item->RSection()) == nullptr || item->WSection() != item->RSection())
            find(item->Key(), QStringLiteral("no image \"%1\" to write").arg(item->WSection()));
    }
    for (int n = 0; n < m_kx.ColAdr().count(); ++n) {
        const clsKXAdr& image = m_kx.ColAdr().at(n);
        for (int i = 1; i <= image.MsgMax(); ++i) {
            if (!image.Tag(i).isEmpty())
                checkTag(image.Section(), image.Tag(i));
        }
        for (int i = 1; i <= image.WMsgMax(); ++i) {
            if (image.WCmd(i) != u"Direct" && !image.WTag(i).startsWith(u"&h"))
                checkTag(image.Section(), image.WTag(i));
        }
    }
}

void DefinitionCheck::checkNumber(const clsData& item)
{
    const QString low = m_kx.checkTag(item.LimitL());
    const QString high = m_kx.checkTag(item.LimitH());
    if (!holds(low, item.SignL(), item.VData()) || !holds(item.VData(), item.SignH(), high))
        find(item.Key(), QStringLiteral("default outside its limits: %1 %2 %3 %4 %5")
                             .arg(low, item.SignL(), item.VData(), item.SignH(), high));
    if (!fitsMemory(item, item.Data()))
        find(item.Key(), QStringLiteral("default %1 does not fit %2 bytes").arg(item.Data()).arg(item.DataLen()));
}

// The default is one of the choices, and the items that follow it without a cell hold what it sets.
void DefinitionCheck::checkChoice(clsData& item)
{
    const bool isBit = item.MType() == ItemType::Bit;
    const int value = item.Data().toInt();
    if (item.VData().isEmpty() || !fitsMemory(item, item.Data()) ||
        (isBit && value != item.BitOn() && value != item.BitOff()))
        find(item.Key(), QStringLiteral("default %1 is no choice").arg(item.Data()));
    if (item.MType() != ItemType::Input)
        return;
    item.setData(item.Data());
    for (const auto& other : m_kx.items()) {
        if (!other->Visible() && other->Data() != other->DefData())
            find(other->Key(),
                 QStringLiteral("%1 sets %2, the default is %3").arg(item.Key(), other->Data(), other->DefData()));
    }
}

// Names, captions and the first name of every table entry; an item's label has the item's name.
void DefinitionCheck::checkTexts(const clsData& item)
{
    QStringList texts{item.DataName(), key(item, "ComboStrings")};
    if (item.MType() == ItemType::Bit)
        texts << item.BitOnCap() << item.BitOffCap();
    for (const QString& table : {item.Section(), item.ICSection(), item.IKSection()}) {
        for (const QString& line :
             m_context.machine.profiles.readSection(path(QStringLiteral("MultiSelect.ini")), table)) {
            const QString name = line.section(u'=', 1).section(QStringLiteral("vbTab"), 0, 0);
            if (line.startsWith(u"Name") && name != u"Test")
                texts << name;
            const QStringList tags = line.startsWith(u"SetTags") ? line.section(u'=', 1).split(u',') : QStringList();
            for (const QString& tag : tags) {
                if (tag.startsWith(u"tagD") || tag.startsWith(u"tagV"))
                    checkTag(table, tag.mid(4));
            }
        }
    }
    for (const QString& text : texts)
        checkText(item.Key(), text);
}

void DefinitionCheck::checkText(const QString& where, const QString& english)
{
    for (const char* language : {"EN.txt", "JP.txt"}) {
        const QString file =
            m_context.machine.paths.toMachine(QStringLiteral("C:\\Vorlant\\Lang\\") + QLatin1String(language));
        const auto value =
            m_context.machine.profiles.read(file, QStringLiteral("Language"), english, QString(), kValueBuffer);
        const QString text = QStringLiteral("\"%1\" in %2").arg(english, QLatin1String(language));
        if (!english.isEmpty() && value.text.isEmpty())
            find(where, QStringLiteral("no text for ") + text);
        else if (value.text.count(QStringLiteral("vbTab")) != english.count(QStringLiteral("vbTab")))
            find(where, QStringLiteral("another number of choices for ") + text);
    }
}
