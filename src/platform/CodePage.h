#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

namespace platform {

// The system code page: the byte encoding of definition files, settings, parameter files, logs and text that the
// controller sends. Inside the program text is QString; every crossing goes through one object of this class.
// Copies share the converter; use from one thread.
class CodePage
{
public:
    // iconvName: any encoding that iconv knows, e.g. "CP932". An unknown name falls back to CP932.
    explicit CodePage(const QByteArray& iconvName = "CP932");

    // The code page named by the environment variable VORLANT_CODEPAGE, CP932 when it is not set.
    static CodePage fromEnvironment();

    QByteArray name() const;

    // Bytes that are not valid in the code page become U+FFFD, one for each byte. NUL bytes are kept.
    QString toText(const QByteArray& bytes) const;

    // Characters that the code page lacks become "?". NUL characters are kept.
    QByteArray fromText(const QString& text) const;
    // The same, but nothing when the code page lacks one of the characters.
    std::optional<QByteArray> exactly(const QString& text) const;

    // The longest beginning of a text that takes no more than that many bytes; characters stay whole.
    QString fitting(const QString& text, qsizetype bytes) const;

private:
    class Converter;
    QByteArray m_name;
    std::shared_ptr<Converter> m_converter;
};

} // namespace platform
