#include "DefinitionCheck.h"

#include "ModelCatalogue.h"
#include "Numbers.h"
#include "OptionExpression.h"
#include "clsLog.h"

#include <QFile>

namespace {

constexpr int kValueBuffer = 512;

QString section(const char* prefix, int n)
{
    return QString::fromLatin1(prefix) + QString::number(n);
}

bool holds(const QString& low, const QString& sign, const QString& high)
{
    const auto a = platform::parseDouble(low);
    const auto b = platform::parseDouble(high);
    if (!a || !b)
        return false;
    return sign == u"<" ? *a < *b : sign == u"<=" && *a <= *b;
}

bool fitsMemory(const clsData& item)
{
    const auto value = platform::parseDouble(item.Data());
    if (!value || item.DataLen() > 2)
        return value.has_value();
    return item.DataLen() == 1 ? *value >= 0 && *value <= 255 : *value >= -32768 && *value <= 32767;
}

} // namespace

QStringList DefinitionCheck::run(int number, const QString& modelString)
{
    m_findings.clear();
    const platform::ProfileStore::Batch quick(m_context.machine.profiles); // a file is looked at once
    const ModelEntry entry = ModelCatalogue(m_library).entry(number);
    m_screen = path(entry.screenFile);
    m_comm = path(entry.commFile);
    m_selections = path(QStringLiteral("MultiSelect.ini"));
    m_kx.setModel(modelString);
    checkSections();
    loadNoted(number, modelString);
    m_tags.clear();
    for (const auto& item : m_kx.items())
        m_tags.insert(item->Key());
    checkGrid();
    checkMemory();
    checkItemReferences();
    checkBlockReferences();
    checkCommTags();
    checkSetTags();
    checkTexts();
    checkValues();
    return m_findings;
}

// Before the load, which adds the sections and entries that it misses.
void DefinitionCheck::checkSections()
{
    const int count = key(QStringLiteral("Setting"), QStringLiteral("DataMaxCount")).toInt();
    for (int n = 1; n <= count; ++n) {
        const QString item = section("Datas", n);
        if (!isBuilt(item))
            continue;
        const QString image = key(item, QStringLiteral("CommRaedSection"));
        if (!m_context.machine.profiles.hasSection(m_comm, image))
            find(item, QStringLiteral("no section %1 in the comm file").arg(image));
        for (const char* name : {"MultiSelectSection", "InputCSelectSection", "InputKSelectSection"}) {
            const QString table = key(item, QLatin1String(name));
            if (!table.isEmpty() && (tableNames(table).isEmpty() || tableNames(table).last() != u"Test"))
                find(item, QStringLiteral("table %1 does not end with the entry \"Test\"").arg(table));
        }
    }
}

// What the program itself finds wrong goes to the error log.
void DefinitionCheck::loadNoted(int number, const QString& modelString)
{
    clsLog log(m_context.machine);
    log.setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
    log.setLogFileName(QStringLiteral("Check.log"));
    m_kx.Logs(&log, nullptr);
    m_kx.load(number, &m_library, modelString);
    m_kx.Logs(nullptr, nullptr);
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

QString DefinitionCheck::key(const QString& section, const QString& name) const
{
    return m_context.machine.profiles.read(m_screen, section, name, QString(), kValueBuffer).text;
}

bool DefinitionCheck::isBuilt(const QString& section) const
{
    return isOptionOn(key(section, QStringLiteral("Option")), key(section, QStringLiteral("Visible")) == u"True",
                      m_kx.modelString());
}

void DefinitionCheck::checkTag(const QString& where, const QString& tag)
{
    if (!m_tags.contains(tag))
        find(where, QStringLiteral("no item %1").arg(tag));
}

void DefinitionCheck::checkItemReferences()
{
    for (const auto& item : m_kx.items()) {
        const QString decimals = key(section("Datas", item->number()), QStringLiteral("DataInfo")).section(u',', 0, 0);
        if (decimals.startsWith(u"DOT"))
            checkTag(item->Key(), decimals.mid(3));
        for (const QString& limit : {item->limitTexts().definedLower, item->limitTexts().definedUpper}) {
            if (limit.startsWith(u"TAG"))
                checkTag(item->Key(), limit.mid(3));
        }
        if (m_kx.getBlockByNo(item->BlockNo()) == nullptr)
            find(item->Key(), QStringLiteral("no block %1").arg(item->BlockNo()));
    }
}

void DefinitionCheck::checkBlockReferences()
{
    for (const clsBlock* block : m_kx.BlockCol()) {
        for (int i = 0; !block->getRelayBlock(i).isEmpty(); ++i) {
            if (m_kx.getBlockByNo(block->getRelayBlock(i).toInt()) == nullptr)
                find(section("BlockInfo", block->m_lNo), QStringLiteral("no block %1").arg(block->getRelayBlock(i)));
        }
    }
}

void DefinitionCheck::checkCommTags()
{
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

void DefinitionCheck::checkSetTags()
{
    for (const auto& item : m_kx.items()) {
        for (const QString& table : {item->Section(), item->ICSection(), item->IKSection()}) {
            const QStringList lines = m_context.machine.profiles.readSection(m_selections, table);
            for (const QString& line : lines) {
                const QStringList tags =
                    line.startsWith(u"SetTags") ? line.section(u'=', 1).split(u',') : QStringList();
                for (const QString& tag : tags) {
                    if (tag.startsWith(u"tagD") || tag.startsWith(u"tagV"))
                        checkTag(table, tag.mid(4));
                }
            }
        }
    }
}

void DefinitionCheck::checkValues()
{
    for (const auto& item : m_kx.items()) {
        if (item->MType() == ItemType::Data)
            checkNumber(*item);
        else if (item->MType() != ItemType::String)
            checkChoice(*item);
    }
}

void DefinitionCheck::checkNumber(const clsData& item)
{
    const QString low = m_kx.checkTag(item.LimitL());
    const QString high = m_kx.checkTag(item.LimitH());
    if (!holds(low, item.SignL(), item.VData()) || !holds(item.VData(), item.SignH(), high))
        find(item.Key(), QStringLiteral("default outside its limits: %1 %2 %3 %4 %5")
                             .arg(low, item.SignL(), item.VData(), item.SignH(), high));
    if (!fitsMemory(item))
        find(item.Key(), QStringLiteral("default %1 does not fit %2 bytes").arg(item.Data()).arg(item.DataLen()));
}

// The default is one of the choices, and the items that follow it without a cell hold what it sets.
void DefinitionCheck::checkChoice(clsData& item)
{
    const bool isBit = item.MType() == ItemType::Bit;
    const int value = item.Data().toInt();
    if (item.VData().isEmpty() || !fitsMemory(item) || (isBit && value != item.BitOn() && value != item.BitOff()))
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
