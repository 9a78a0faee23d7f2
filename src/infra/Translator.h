#pragma once

#include "clsINI.h"

#include <QString>

#include <functional>
#include <memory>

namespace platform {
class Form;
class ProfileDocument;
} // namespace platform

// The translation of one English text, for code that needs no more of the library than this.
using TranslateText = std::function<QString(const QString&)>;

// Texts and forms in the language in use. The language file (INI syntax, folder "Lang" under the program folder) is the
// one that the context names at the moment of each call. The English text is the key; a text that the file lacks is
// added with its English wording as the value, which is that of the shipped file, else the key itself. Nothing fails:
// without a usable file the English texts are shown.
class Translator
{
public:
    explicit Translator(Context& context);
    ~Translator();

    // The translation of one text, its "vbCrLf" as line breaks. An empty text touches no file.
    QString text(const QString& english);

    // Captions, fonts and tool tips of a form and its controls, in the form's control order.
    void form(platform::Form& form);

    // "LocaleID" of the language file in use; empty when it has none.
    QString languageCode();

    // The folder of the language files, made when it is missing.
    static QString folder(const Context& context);
    // No language needs more: a larger file of that name is something else, and is left alone.
    static constexpr qint64 kMaxFileBytes = qint64{4} * 1024 * 1024;
    static bool isUsable(const Context& context, const QString& fileName);

private:
    platform::Result<> mayUse(const QString& fileName) const;
    clsINI* file(); // null: the texts stay English
    QString lookUp(const QString& section, const QString& key, const QString& current);
    QString inEnglish(const QString& section, const QString& key, const QString& current);

    Context& m_context;
    std::unique_ptr<clsINI> m_file; // kept open on m_fileName
    QString m_fileName;
    std::unique_ptr<platform::ProfileDocument> m_english;
    bool m_isOpen = false;
};
