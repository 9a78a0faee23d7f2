#include "Translator.h"

#include "FilePaths.h"
#include "FormTranslation.h"

namespace {

const QString kSection = QStringLiteral("Language");
const QString kLineBreak = QStringLiteral("vbCrLf");

} // namespace

QString Translator::folder(const Context& context)
{
    const QString folder = context.machine.folders.program() + QStringLiteral("\\Lang");
    filepaths::makeDir(context.machine, folder);
    return folder;
}

clsINI& Translator::file()
{
    if (m_file == nullptr || m_fileName != m_context.languageFile) {
        m_file = std::make_unique<clsINI>(m_context);
        m_file->setIniPath(folder(m_context));
        m_file->setIniFileName(m_context.languageFile);
        m_fileName = m_context.languageFile;
    }
    return *m_file;
}

QString Translator::text(const QString& english)
{
    if (english.isEmpty())
        return english;
    QString value = m_context.translates ? file().GetIniData(kSection, english, english) : english;
    return value.replace(kLineBreak, QStringLiteral("\r\n"));
}

void Translator::form(platform::Form& form)
{
    if (!m_context.translates)
        return;
    platform::ProfileStore::Batch batch(m_context.machine.profiles);
    FormTranslation(form, file(), m_context.settings).run();
}
