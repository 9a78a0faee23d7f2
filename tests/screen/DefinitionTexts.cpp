#include "DefinitionCheck.h"

// The part of DefinitionCheck that reads the language files.

namespace {

constexpr int kValueBuffer = 512;
const QString kEndOfTable = QStringLiteral("Test");
const QString kSeparator = QStringLiteral("vbTab");

} // namespace

void DefinitionCheck::checkTexts()
{
    for (const Label& label : builtLabels())
        checkText(label.section, label.caption);
    for (const clsBlock* block : m_kx.BlockCol()) {
        const QString name = QStringLiteral("BlockInfo%1").arg(block->m_lNo);
        checkText(name, block->m_sName);
        checkText(name, key(name, QStringLiteral("ButtonCaption")));
    }
    for (const auto& item : m_kx.items()) {
        checkText(item->Key(), item->DataName());
        checkText(item->Key(), key(QStringLiteral("Datas%1").arg(item->number()), QStringLiteral("ComboStrings")));
        if (item->MType() == ItemType::Bit) {
            checkText(item->Key(), item->BitOnCap());
            checkText(item->Key(), item->BitOffCap());
        }
        for (const QString& table : {item->Section(), item->ICSection(), item->IKSection()}) {
            const QStringList names = tableNames(table);
            for (const QString& name : names) {
                if (name != kEndOfTable)
                    checkText(table, name);
            }
        }
    }
}

// The first name of every entry.
QStringList DefinitionCheck::tableNames(const QString& section) const
{
    QStringList names;
    const QStringList lines = m_context.machine.profiles.readSection(m_selections, section);
    for (const QString& line : lines) {
        if (line.startsWith(u"Name"))
            names << line.section(u'=', 1).section(kSeparator, 0, 0);
    }
    return names;
}

void DefinitionCheck::checkText(const QString& where, const QString& english)
{
    if (english.isEmpty())
        return;
    for (const char* language : {"EN.txt", "JP.txt"}) {
        const QString file =
            m_context.machine.paths.toMachine(QStringLiteral("C:\\Vorlant\\Lang\\") + QString::fromLatin1(language));
        const auto value =
            m_context.machine.profiles.read(file, QStringLiteral("Language"), english, QString(), kValueBuffer);
        const QString text = QStringLiteral("\"%1\" in %2").arg(english, QString::fromLatin1(language));
        if (value.text.isEmpty())
            find(where, QStringLiteral("no text for ") + text);
        else if (value.text.count(kSeparator) != english.count(kSeparator))
            find(where, QStringLiteral("another number of choices for ") + text);
        else if (value.text.contains(u"5V") != english.contains(u"5V"))
            find(where, QStringLiteral("the voltage mark is lost for ") + text);
    }
}
