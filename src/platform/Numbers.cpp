#include "Numbers.h"

#include <QByteArray>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>

namespace platform {

namespace {

constexpr int kSingleDigits = 7;
constexpr int kDoubleDigits = 15;
constexpr int kSmallestPlainExponent = -4; // 0.0001; smaller ones are written as 1E-05

// An "&h" or "&o" text: the bits of an unsigned number of up to 32 bits.
std::optional<quint32> parseRadix(const QString& text)
{
    if (text.size() < 3 || text[0] != u'&')
        return {};
    const QChar mark = text[1].toLower();
    if (mark != u'h' && mark != u'o')
        return {};
    const QString digits = text.mid(2);
    const bool clean = std::all_of(digits.cbegin(), digits.cend(), [](QChar c) { return c.isLetterOrNumber(); });
    bool ok = false;
    const quint32 value = digits.toUInt(&ok, mark == u'h' ? 16 : 8);
    return ok && clean ? std::optional<quint32>(value) : std::nullopt;
}

// The parts of a decimal text, walked once from left to right.
struct Decimal
{
    double digits = 0; // all digits as one whole number
    int fraction = 0;  // how many of them stand behind the point
    int exponent = 0;
    bool negative = false;
};

class DecimalReader
{
public:
    explicit DecimalReader(const QString& text) : m_text(text) {}

    std::optional<Decimal> read()
    {
        readSign();
        const int whole = readDigits(true);
        int behind = 0;
        if (skip(u'.'))
            behind = m_value.fraction = readDigits(false);
        if (whole + behind == 0 || !readExponent() || m_pos != m_text.size())
            return {};
        return m_value;
    }

private:
    QChar peek() const { return m_pos < m_text.size() ? m_text[m_pos] : QChar(); }
    bool skip(char16_t wanted)
    {
        if (peek() != wanted)
            return false;
        ++m_pos;
        return true;
    }
    void readSign()
    {
        if (skip(u'-'))
            m_value.negative = true;
        else
            skip(u'+');
    }
    int readDigits(bool commas)
    {
        int count = 0;
        for (;; ++m_pos) {
            const char16_t c = peek().unicode();
            if (c >= u'0' && c <= u'9') {
                m_value.digits = m_value.digits * 10 + (c - u'0');
                ++count;
            } else if (c != u',' || !commas || count == 0) {
                return count;
            }
        }
    }
    bool readExponent()
    {
        if (peek().toLower() != u'e')
            return true;
        ++m_pos;
        const bool negative = skip(u'-');
        if (!negative)
            skip(u'+');
        int count = 0;
        for (; peek() >= u'0' && peek() <= u'9'; ++m_pos, ++count)
            m_value.exponent = std::min(m_value.exponent * 10 + peek().digitValue(), 9999);
        if (negative)
            m_value.exponent = -m_value.exponent;
        return count > 0;
    }

    const QString& m_text;
    qsizetype m_pos = 0;
    Decimal m_value;
};

std::optional<double> parseNumber(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (const auto bits = parseRadix(trimmed))
        return static_cast<double>(static_cast<qint32>(*bits));
    const auto decimal = DecimalReader(trimmed).read();
    if (!decimal)
        return {};
    const int power = decimal->exponent - decimal->fraction;
    double value = decimal->digits;
    if (power < 0)
        value /= std::pow(10.0, -power);
    else if (power > 0)
        value *= std::pow(10.0, power);
    if (!std::isfinite(value))
        return {};
    return decimal->negative ? -value : value;
}

// Significant digits (no point, no trailing zeros) and the power of ten of the first one.
struct Significant
{
    QByteArray digits;
    int exponent = 0;
    bool negative = false;
};

Significant significantOf(double value, int precision)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*e", precision - 1, std::fabs(value));
    const QByteArray text(buffer);
    const auto mark = text.indexOf('e');
    Significant result;
    result.negative = std::signbit(value) && value != 0;
    result.exponent = text.mid(mark + 1).toInt();
    result.digits = text.left(mark).replace(".", "");
    while (result.digits.size() > 1 && result.digits.endsWith('0'))
        result.digits.chop(1);
    return result;
}

QString plainText(const Significant& number)
{
    QByteArray digits = number.digits;
    const int exponent = number.exponent;
    if (exponent < 0)
        digits = "0." + QByteArray(-exponent - 1, '0') + digits;
    else if (digits.size() <= exponent + 1)
        digits += QByteArray(exponent + 1 - digits.size(), '0');
    else
        digits.insert(exponent + 1, '.');
    return QString::fromLatin1((number.negative ? "-" : "") + digits);
}

QString decimalText(double value, int precision)
{
    if (!std::isfinite(value))
        return QString::number(value);
    const Significant number = significantOf(value, precision);
    if (number.exponent >= kSmallestPlainExponent && number.exponent < precision)
        return plainText(number);
    QByteArray digits = number.digits;
    if (digits.size() > 1)
        digits.insert(1, '.');
    char exponent[16];
    std::snprintf(exponent, sizeof exponent, "E%+03d", number.exponent);
    return QString::fromLatin1((number.negative ? "-" : "") + digits + exponent);
}

// Adds one unit in the last place of a digit text.
void increment(QByteArray& digits)
{
    for (auto i = digits.size() - 1; i >= 0; --i) {
        if (digits[i] != '9') {
            ++digits[i];
            return;
        }
        digits[i] = '0';
    }
    digits.prepend('1');
}

QString formatNumber(double value, int precision, const QString& pattern)
{
    if (!std::isfinite(value))
        return QString::number(value);
    const auto point = pattern.indexOf(u'.');
    const QString wholePattern = point < 0 ? pattern : pattern.left(point);
    const auto places = point < 0 ? 0 : pattern.size() - point - 1;
    const Significant number = significantOf(value, precision);
    // Digits up to the last place wanted, then the rounding digit.
    const auto wanted = number.exponent + 1 + places;
    QByteArray digits = number.digits;
    if (wanted < 0) {
        digits.clear();
    } else if (digits.size() <= wanted) {
        digits += QByteArray(wanted - digits.size(), '0');
    } else {
        const bool up = digits[wanted] >= '5';
        digits.truncate(wanted);
        if (up)
            increment(digits);
    }
    const auto leading = std::max<qsizetype>(wholePattern.count(u'0'), 1) + places;
    if (digits.size() < leading)
        digits.prepend(QByteArray(leading - digits.size(), '0'));
    const bool isZero = digits.count('0') == digits.size();
    if (places > 0)
        digits.insert(digits.size() - places, '.');
    return QString::fromLatin1((number.negative && !isZero ? "-" : "") + digits);
}

// The digits of a decimal text without its leading zeros, and how many of them stand before the point: a negative count
// stands for zeros behind it.
struct PlacedDigits
{
    QByteArray digits;
    qsizetype point = 0;

    QByteArray whole() const { return point > 0 ? digits.left(point).leftJustified(point, '0') : QByteArray(); }
    QByteArray behind() const { return point < 0 ? QByteArray(-point, '0') + digits : digits.mid(point); }
};

PlacedDigits placedDigits(const QString& text, qsizetype shift)
{
    PlacedDigits result;
    for (const QChar c : text) {
        if (c.toLower() == u'e')
            break;
        if (c >= u'0' && c <= u'9')
            result.digits += static_cast<char>(c.unicode());
    }
    qsizetype zeros = 0;
    while (zeros < result.digits.size() && result.digits[zeros] == '0')
        ++zeros;
    result.point = result.digits.size() + shift - zeros;
    result.digits.remove(0, zeros);
    return result;
}

// To the nearest whole number, halves to even; behind: the digits that stand behind the point.
QByteArray roundedWhole(QByteArray whole, const QByteArray& behind)
{
    const bool isOdd = !whole.isEmpty() && (whole.back() - '0') % 2 != 0;
    const char first = behind.isEmpty() ? '0' : behind.front();
    const bool isHalf = first == '5' && behind.mid(1).count('0') == behind.size() - 1;
    if (first > '5' || (first == '5' && (!isHalf || isOdd)))
        increment(whole);
    return whole;
}

template <typename Integer> std::optional<Integer> rounded(double value)
{
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        return {};
    return static_cast<Integer>(whole);
}

} // namespace

std::optional<qint32> roundToInt32(double value)
{
    return rounded<qint32>(value);
}

std::optional<qint16> roundToInt16(double value)
{
    return rounded<qint16>(value);
}

std::optional<qint32> parseInt32(const QString& text)
{
    const auto value = parseNumber(text);
    return value ? roundToInt32(*value) : std::nullopt;
}

std::optional<qint16> parseInt16(const QString& text)
{
    if (const auto bits = parseRadix(text.trimmed()))
        return *bits <= 0xFFFF ? std::optional<qint16>(static_cast<qint16>(*bits)) : std::nullopt;
    const auto value = parseNumber(text);
    return value ? roundToInt16(*value) : std::nullopt;
}

std::optional<float> parseSingle(const QString& text)
{
    const auto value = parseNumber(text);
    if (!value || std::fabs(*value) > FLT_MAX)
        return {};
    return static_cast<float>(*value);
}

std::optional<double> parseDouble(const QString& text)
{
    return parseNumber(text);
}

std::optional<QString> scaledText(const QString& text, int places, bool isWhole)
{
    const QString trimmed = text.trimmed();
    const auto value = parseSingle(trimmed);
    if (!value)
        return {};
    if (const auto bits = parseRadix(trimmed))
        return scaledText(QString::number(static_cast<qint32>(*bits)), places, isWhole);
    const auto decimal = DecimalReader(trimmed).read();
    if (!decimal || *value == 0.0F) // smaller than any number that is held
        return QStringLiteral("0");
    const PlacedDigits placed = placedDigits(trimmed, decimal->exponent - decimal->fraction + places);
    QByteArray behind = placed.behind();
    QByteArray digits = isWhole ? roundedWhole(placed.whole(), behind) : placed.whole();
    while (!isWhole && behind.endsWith('0'))
        behind.chop(1);
    if (digits.isEmpty())
        digits = "0";
    if (!isWhole && !behind.isEmpty())
        digits += '.' + behind;
    return QString::fromLatin1((decimal->negative && digits != "0" ? "-" : "") + digits);
}

QString singleText(float value)
{
    return decimalText(static_cast<double>(value), kSingleDigits);
}

QString doubleText(double value)
{
    return decimalText(value, kDoubleDigits);
}

QString formatSingle(float value, const QString& pattern)
{
    return formatNumber(static_cast<double>(value), kSingleDigits, pattern);
}

QString formatDouble(double value, const QString& pattern)
{
    return formatNumber(value, kDoubleDigits, pattern);
}

} // namespace platform
