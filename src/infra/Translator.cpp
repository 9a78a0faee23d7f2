#include "Translator.h"

#include "FilePaths.h"
#include "FolderName.h"
#include "FormTranslation.h"
#include "IniBatch.h"

namespace {

const QString kProgramTexts = QStringLiteral("Language");
const QString kLineBreak = QStringLiteral("vbCrLf");

} // namespace

QString Translator::folder(const Context& context)
{
    const QString folder = context.machine.folders.program() + QStringLiteral("\\Lang");
    filepaths::makeDir(context.machine, folder);
    return folder;
}

bool Translator::isUsable(const Context& context, const QString& fileName)
{
    return context.machine.paths.fileSize(folder(context) + u'\\' + fileName) <= kMaxFileBytes;
}

// A name that is refused must not lead to another file.
platform::Result<> Translator::mayUse(const QString& fileName) const
{
    if (!fileName.isEmpty() && !isBareFileName(fileName))
        return platform::Failure{kRefusedFileName.arg(fileName)};
    if (!isUsable(m_context, fileName))
        return platform::Failure{QStringLiteral("%1 is too large for a language file").arg(fileName)};
    return {};
}

clsINI* Translator::file()
{
    if (m_isOpen && m_fileName == m_context.languageFile)
        return m_file.get();
    m_isOpen = true;
    m_fileName = m_context.languageFile;
    m_file.reset();
    const platform::Result<> allowed = mayUse(m_fileName);
    if (!allowed.ok()) {
        m_context.errorLog.get().LogWrite(
            QStringLiteral("[LibraryError]%1: the texts stay English").arg(allowed.error()));
        return nullptr;
    }
    m_file = std::make_unique<clsINI>(m_context);
    m_file->setIniPath(folder(m_context));
    m_file->setIniFileName(m_fileName);
    return m_file.get();
}

QString Translator::text(const QString& english)
{
    if (english.isEmpty())
        return english;
    clsINI* language = m_context.translates ? file() : nullptr;
    QString value = language != nullptr ? language->GetIniData(kProgramTexts, english, english) : english;
    return value.replace(kLineBreak, QStringLiteral("\r\n"));
}

QString Translator::languageCode()
{
    clsINI* language = m_context.translates ? file() : nullptr;
    return language != nullptr ? language->GetIniData(QStringLiteral("Info"), QStringLiteral("LocaleID"), {}, true)
                               : QString();
}

void Translator::form(platform::Form& form)
{
    clsINI* language = m_context.translates ? file() : nullptr;
    if (language == nullptr)
        return;
    IniBatch batch(m_context);
    FormTranslation(form, *language, m_context.settings).run();
    batch.commitLogged();
}
