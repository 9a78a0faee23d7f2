// The texts of a definition, in the files of every language.
#include "DefinitionFindings.h"
#include "Machine.h"
#include "clsKX.h"

#include <QDir>

namespace {

constexpr int kTextBuffer = 512;
const QString kTextSection = QStringLiteral("Language");
const QString kChoiceMark = QStringLiteral("vbTab"); // between choices
const QString kLastName = QStringLiteral("Test");    // of a selection table

QString readKey(const DefinitionFindings& findings, const QString& section, const QString& key)
{
    const QString screen = findings.definitionPath(findings.screenFile());
    return findings.machine().profiles.read(screen, section, key, QString(), kTextBuffer).text;
}

// The first name of every table entry is shown in the cell.
QStringList namesIn(const DefinitionFindings& findings, const QString& table)
{
    QStringList names;
    for (const QString& line : findings.tableLines(table)) {
        const QString name = line.section(u'=', 1).section(kChoiceMark, 0, 0);
        if (line.startsWith(u"Name") && name != kLastName)
            names << name;
    }
    return names;
}

// Names, captions and choices; an item's label has the item's name.
QStringList textsOf(const DefinitionFindings& findings)
{
    QStringList texts;
    for (const clsBlock* block : findings.kx().BlockCol())
        texts << block->m_sName;
    for (const auto& item : findings.kx().items()) {
        texts << item->DataName()
              << readKey(findings, QStringLiteral("Datas%1").arg(item->number()), QStringLiteral("ComboStrings"));
        if (item->MType() == ItemType::Bit)
            texts << item->BitOnCap() << item->BitOffCap();
    }
    for (const QString& table : findings.tables())
        texts << namesIn(findings, table);
    texts.removeDuplicates();
    texts.removeAll(QString());
    return texts;
}

void checkText(DefinitionFindings& findings, const QString& file, const QString& english)
{
    const QString language = QDir(file).dirName();
    const QString text = findings.machine().profiles.read(file, kTextSection, english, QString(), kTextBuffer).text;
    if (text.isEmpty())
        findings.add({language, kTextSection, english,
                      QStringLiteral("there is no text for it, so it is shown in English"),
                      QStringLiteral("add it with its translation")});
    else if (text.count(kChoiceMark) != english.count(kChoiceMark))
        findings.add({language, kTextSection, english,
                      QStringLiteral("the number of choices is %1, not %2")
                          .arg(text.count(kChoiceMark) + 1)
                          .arg(english.count(kChoiceMark) + 1),
                      QStringLiteral("translate every choice")});
}

} // namespace

void definitionRules::checkTexts(DefinitionFindings& findings)
{
    const platform::Machine& machine = findings.machine();
    const QDir folder(machine.paths.toMachine(machine.folders.program() + QStringLiteral("\\Lang")));
    const QStringList texts = textsOf(findings);
    for (const QString& name : folder.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
        const QString file = folder.filePath(name);
        if (!findings.machine().profiles.read(file, QStringLiteral("Info"), QStringLiteral("Name"), {}, 2).found)
            continue;
        for (const QString& text : texts)
            checkText(findings, file, text);
    }
}
