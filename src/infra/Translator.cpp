#include "Translator.h"

#include "FilePaths.h"
#include "FolderName.h"
#include "FormTranslation.h"
#include "IniBatch.h"
#include "ProfileDocument.h"

#include <QFile>

namespace {

const QString kProgramTexts = QStringLiteral("Language");
const QString kLineBreak = QStringLiteral("vbCrLf");

} // namespace

Translator::Translator(Context& context) : m_context(context) {}

Translator::~Translator() = default;

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

// What the file lacks is added to it.
QString Translator::lookUp(const QString& section, const QString& key, const QString& current)
{
    clsINI* language = file();
    if (language == nullptr)
        return inEnglish(section, key, current);
    const QString known = language->GetIniData(section, key, QString(), true);
    return known.isEmpty() ? language->GetIniData(section, key, inEnglish(section, key, current)) : known;
}

QString Translator::inEnglish(const QString& section, const QString& key, const QString& current)
{
    if (m_english == nullptr) {
        QFile file(QStringLiteral(":/texts/EN.txt"));
        const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        m_english = std::make_unique<platform::ProfileDocument>(bytes, platform::CodePage());
    }
    const QString wording = m_english->value(section, key).value_or(QString());
    const bool isSame = wording.compare(current, Qt::CaseInsensitive) == 0; // another text of the same letters
    return wording.isEmpty() || isSame ? current : wording;
}

QString Translator::text(const QString& english)
{
    if (english.isEmpty())
        return english;
    QString value =
        m_context.translates ? lookUp(kProgramTexts, english, english) : inEnglish(kProgramTexts, english, english);
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
    if (!m_context.translates)
        return;
    IniBatch batch(m_context);
    const auto text = [this](const QString& section, const QString& key, const QString& current) {
        return lookUp(section, key, current);
    };
    FormTranslation(form, text, m_context.settings).run();
    batch.commitLogged();
}
