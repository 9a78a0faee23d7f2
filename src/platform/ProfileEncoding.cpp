#include "ProfileEncoding.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>

namespace platform {

namespace {

const QByteArray kUtf8Mark = "\xEF\xBB\xBF";
const QByteArray kLittleMark = "\xFF\xFE";
const QByteArray kBigMark = "\xFE\xFF";

// A mark within the text is a character like any other.
QString decoded(QByteArrayView bytes, QStringDecoder::Encoding form)
{
    QStringDecoder decoder(form, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(bytes);
}

bool isUtf8Text(const QByteArray& bytes)
{
    if (isAsciiBytes(bytes))
        return false;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

QByteArray utf16Of(const QByteArray& utf8, QStringEncoder::Encoding form)
{
    QStringEncoder encoder(form);
    return encoder(decoded(utf8, QStringDecoder::Utf8));
}

} // namespace

bool isAsciiBytes(QByteArrayView bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(), [](char c) { return static_cast<quint8>(c) < 0x80; });
}

bool isAsciiText(QStringView text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

QByteArray ProfileEncoding::opened(const QByteArray& file)
{
    m_form = Form::CodePage;
    QByteArray bytes = file;
    if (file.startsWith(kLittleMark)) {
        m_form = Form::Utf16Little;
        bytes = decoded(QByteArrayView(file).sliced(kLittleMark.size()), QStringDecoder::Utf16LE).toUtf8();
    } else if (file.startsWith(kBigMark)) {
        m_form = Form::Utf16Big;
        bytes = decoded(QByteArrayView(file).sliced(kBigMark.size()), QStringDecoder::Utf16BE).toUtf8();
    } else if (file.startsWith(kUtf8Mark)) {
        m_form = Form::Utf8WithMark;
        bytes = file.sliced(kUtf8Mark.size());
    } else if (isUtf8Text(file)) {
        m_form = Form::Utf8;
    }
    const bool isUtf16 = m_form == Form::Utf16Little || m_form == Form::Utf16Big;
    m_isWhole = !isUtf16 || closed(bytes) == file;
    return bytes;
}

QByteArray ProfileEncoding::closed(const QByteArray& bytes) const
{
    switch (m_form) {
    case Form::Utf8WithMark:
        return kUtf8Mark + bytes;
    case Form::Utf16Little:
        return kLittleMark + utf16Of(bytes, QStringEncoder::Utf16LE);
    case Form::Utf16Big:
        return kBigMark + utf16Of(bytes, QStringEncoder::Utf16BE);
    case Form::CodePage:
    case Form::Utf8:
        break;
    }
    return bytes;
}

QString ProfileEncoding::decode(const QByteArray& bytes) const
{
    if (isAsciiBytes(bytes))
        return QString::fromLatin1(bytes);
    return isUtf8() ? decoded(bytes, QStringDecoder::Utf8) : m_codePage.toText(bytes);
}

QByteArray ProfileEncoding::encode(const QString& text) const
{
    if (isAsciiText(text))
        return text.toLatin1();
    return isUtf8() ? text.toUtf8() : m_codePage.fromText(text);
}

bool ProfileEncoding::holds(const QString& text) const
{
    return isUtf8() || isAsciiText(text) || m_codePage.exactly(text).has_value();
}

bool ProfileEncoding::isMistaken(const QByteArray& bytes) const
{
    return !isUtf8() && isUtf8Text(bytes);
}

void ProfileEncoding::becomeUtf8()
{
    m_form = Form::Utf8WithMark;
}

} // namespace platform
