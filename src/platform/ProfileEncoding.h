#pragma once

#include "CodePage.h"

#include <QByteArray>
#include <QString>

namespace platform {

bool isAsciiBytes(QByteArrayView bytes);
bool isAsciiText(QStringView text);

// How the characters of an INI-syntax file are stored. A file with a UTF-16 or UTF-8 mark, or whose non-ASCII bytes are
// valid UTF-8, is in that form and stays so; any other is in the code page, and becomes UTF-8 with a mark when it takes
// a character that the code page lacks.
class ProfileEncoding
{
public:
    explicit ProfileEncoding(const CodePage& codePage) : m_codePage(codePage) {}

    // Finds the form of a file and gives its bytes to work on: without the mark, UTF-16 as UTF-8.
    QByteArray opened(const QByteArray& file);
    // The bytes of the file for those that were worked on.
    QByteArray closed(const QByteArray& bytes) const;
    // False when opening lost something, as of a UTF-16 file that ends in half a character.
    bool isWhole() const { return m_isWhole; }

    QString decode(const QByteArray& bytes) const;
    QByteArray encode(const QString& text) const;
    bool holds(const QString& text) const; // whether encode() loses nothing
    // Whether bytes in the code page would be taken for UTF-8 when they are read again.
    bool isMistaken(const QByteArray& bytes) const;
    void becomeUtf8();

private:
    enum class Form { CodePage, Utf8, Utf8WithMark, Utf16Little, Utf16Big };
    bool isUtf8() const { return m_form != Form::CodePage; }

    CodePage m_codePage;
    Form m_form = Form::CodePage;
    bool m_isWhole = true;
};

} // namespace platform
