#include "Wordings.h"

#include "Context.h"
#include "Translator.h"

#include <algorithm>

namespace {

const QString kChoiceMark = QStringLiteral("vbTab"); // between the choices of a list

void addOnce(QStringList& texts, const QString& text)
{
    if (!texts.contains(text))
        texts << text;
}

} // namespace

Wordings::Wordings(const Context& context)
{
    const platform::Machine& machine = context.machine;
    const QString folder = Translator::folder(context);
    const QStringList files = machine.paths.filesIn(folder);
    for (const QString& file : files) {
        if (!Translator::isUsable(context, file))
            continue;
        const QStringList lines = context.machine.profiles.readSection(machine.paths.toMachine(folder + u'\\' + file),
                                                                       QStringLiteral("Language"),
                                                                       static_cast<int>(Translator::kMaxFileBytes));
        for (const QString& line : lines) {
            const QStringList keys = line.section(u'=', 0, 0).split(kChoiceMark);
            const QStringList wordings = line.section(u'=', 1).split(kChoiceMark);
            for (qsizetype i = 0; i < std::min(keys.size(), wordings.size()); ++i)
                add(keys[i].trimmed(), wordings[i].trimmed());
        }
    }
}

void Wordings::add(const QString& key, const QString& wording)
{
    if (key.isEmpty() || wording.isEmpty())
        return;
    QStringList& wordings = m_wordings[key];
    addOnce(wordings, key);
    addOnce(wordings, wording);
    addOnce(m_keys[wording], key);
}

QStringList Wordings::of(const QString& text) const
{
    QStringList all{text};
    for (const QString& key : QStringList{text} + m_keys.value(text)) {
        for (const QString& wording : m_wordings.value(key))
            addOnce(all, wording);
    }
    return all;
}
