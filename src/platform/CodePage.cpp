#include "CodePage.h"

#include <algorithm>
#include <cerrno>
#include <iconv.h>

namespace platform {

namespace {

constexpr auto kFallback = "CP932";
// As iconv_open reports failure.
const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)

} // namespace

// A pair of iconv descriptors; UTF-16 in the machine's byte order is Qt's own form.
class CodePage::Converter
{
public:
    explicit Converter(const QByteArray& name)
        : m_toText(iconv_open("UTF-16LE", name.constData())), m_fromText(iconv_open(name.constData(), "UTF-16LE"))
    {}
    ~Converter()
    {
        if (m_toText != kNoConverter)
            iconv_close(m_toText);
        if (m_fromText != kNoConverter)
            iconv_close(m_fromText);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isUsable() const { return m_toText != kNoConverter && m_fromText != kNoConverter; }

    // Converts piece by piece; what cannot be converted is skipped by skip bytes and replaced.
    // What became of a conversion, and whether every character was there.
    struct Result
    {
        QByteArray bytes;
        bool isExact = true;
    };
    Result toText(const QByteArray& bytes) { return convert(m_toText, bytes, 1, QByteArray("\xFD\xFF", 2)); }
    Result fromText(const QString& text)
    {
        const QByteArray utf16(reinterpret_cast<const char*>(text.constData()), text.size() * 2);
        return convert(m_fromText, utf16, 2, QByteArray("?"));
    }

private:
    static Result convert(iconv_t converter, const QByteArray& source, size_t skip, const QByteArray& replacement);

    iconv_t m_toText;
    iconv_t m_fromText;
};

CodePage::Converter::Result CodePage::Converter::convert(iconv_t converter, const QByteArray& source, size_t skip,
                                                         const QByteArray& replacement)
{
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    Result result;
    char* in = const_cast<char*>(source.constData());
    size_t inLeft = static_cast<size_t>(source.size());
    char buffer[1024];
    while (inLeft > 0) {
        char* out = buffer;
        size_t outLeft = sizeof buffer;
        const size_t done = iconv(converter, &in, &inLeft, &out, &outLeft);
        const int error = errno;
        result.bytes.append(buffer, static_cast<qsizetype>(sizeof buffer - outLeft));
        if (done != static_cast<size_t>(-1) || error == E2BIG)
            continue;
        result.bytes.append(replacement);
        result.isExact = false;
        // A surrogate pair without a place in the code page is one character: skip both halves.
        const bool pair = skip == 2 && inLeft >= 4 && (static_cast<quint8>(in[1]) & 0xFC) == 0xD8;
        const size_t step = std::min(inLeft, pair ? 4 : skip);
        in += step;
        inLeft -= step;
    }
    // Code pages with a shift state end in the initial one, so that texts can be put one behind the other.
    char* out = buffer;
    size_t outLeft = sizeof buffer;
    iconv(converter, nullptr, nullptr, &out, &outLeft);
    result.bytes.append(buffer, static_cast<qsizetype>(sizeof buffer - outLeft));
    return result;
}

CodePage::CodePage(const QByteArray& iconvName) : m_name(iconvName), m_converter(std::make_shared<Converter>(iconvName))
{
    // The empty name would be the one of the user's locale.
    if (!m_name.isEmpty() && m_converter->isUsable())
        return;
    m_name = kFallback;
    m_converter = std::make_shared<Converter>(m_name);
}

CodePage CodePage::fromEnvironment()
{
    const QByteArray name = qgetenv("VORLANT_CODEPAGE");
    return CodePage(name.isEmpty() ? QByteArray(kFallback) : name);
}

QByteArray CodePage::name() const
{
    return m_name;
}

QString CodePage::toText(const QByteArray& bytes) const
{
    const QByteArray utf16 = m_converter->toText(bytes).bytes;
    return QString(reinterpret_cast<const QChar*>(utf16.constData()), utf16.size() / 2);
}

QByteArray CodePage::fromText(const QString& text) const
{
    return m_converter->fromText(text).bytes;
}

std::optional<QByteArray> CodePage::exactly(const QString& text) const
{
    const Converter::Result result = m_converter->fromText(text);
    return result.isExact ? std::optional(result.bytes) : std::nullopt;
}

QString CodePage::fitting(const QString& text, qsizetype bytes) const
{
    const auto isPlain = [](QChar c) { return c.unicode() < 0x80; };
    const QStringView first = QStringView(text).first(std::min(bytes, text.size()));
    if (std::all_of(first.cbegin(), first.cend(), isPlain))
        return first.toString();
    constexpr qsizetype kMostBytes = 4; // of one character
    constexpr qsizetype kMostUnits = 2; // of one byte: a surrogate pair that becomes "?"
    QString cut = text.left(bytes * kMostUnits);
    for (qsizetype excess = fromText(cut).size() - bytes; excess > 0; excess = fromText(cut).size() - bytes)
        cut.chop(std::max<qsizetype>(excess / kMostBytes, 1));
    if (cut.size() < text.size() && !cut.isEmpty() && cut.back().isHighSurrogate())
        cut.chop(1);
    return cut;
}

} // namespace platform
