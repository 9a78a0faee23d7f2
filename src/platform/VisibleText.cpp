#include "VisibleText.h"

#include <algorithm>

namespace platform {

namespace {

constexpr char32_t kFirstOfTwoBytes = 0x100;

// Most texts have none, and a grid asks for each cell at each paint.
bool mayHold(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate() || isInvisible(c.unicode()); });
}

QString escaped(char32_t code)
{
    const QString digits = QString::number(static_cast<uint>(code), 16);
    return code < kFirstOfTwoBytes ? QStringLiteral("\\x") + digits.rightJustified(2, u'0')
                                   : QStringLiteral("<U+%1>").arg(digits.toUpper().rightJustified(4, u'0'));
}

// A lone surrogate would come out of toUcs4 as a replacement character.
QString withEscapes(const QString& text, bool keepsLines)
{
    QString shown;
    shown.reserve(text.size() + 16);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const char32_t code = isPair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode();
        const qsizetype length = isPair ? 2 : 1;
        if (!isInvisible(code) || (keepsLines && code == U'\n'))
            shown += QStringView(text).mid(i, length);
        else
            shown += escaped(code);
        i += length - 1;
    }
    return shown;
}

} // namespace

bool isInvisible(char32_t code)
{
    switch (QChar::category(code)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return QChar::isNonCharacter(code);
    }
}

QString visibleText(const QString& text)
{
    return mayHold(text) ? withEscapes(text, false) : text;
}

QStringList visibleTexts(const QStringList& texts)
{
    QStringList shown;
    for (const QString& text : texts)
        shown << visibleText(text);
    return shown;
}

QString visibleLines(const QString& text)
{
    if (!mayHold(text))
        return text;
    QString lines = text;
    return withEscapes(lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n")), true);
}

} // namespace platform
