#pragma once

#include "ProfileEncoding.h"
#include "Result.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace platform {

// The name of a section or key as a hash key: without difference between upper and lower case of the letters A to Z (a
// full-width letter is another one), and without a copy.
struct ProfileName
{
    QString text;
    bool operator==(const ProfileName& other) const;
};
size_t qHash(const ProfileName& name, size_t seed = 0);

// One INI-syntax file in memory. Lines that nobody changes keep their bytes and their line end; an index over sections
// and keys (without difference between upper and lower case) answers look-ups. The first of equal sections and of equal
// keys counts.
//
// The lines of a section are taken apart when it is first asked for, and share the characters of the file as long as
// nobody changes them: a definition file has thousands of lines, and a program reads a few sections of most files.
class ProfileDocument
{
public:
    ProfileDocument(const QByteArray& bytes, const CodePage& codePage);
    ProfileDocument(const ProfileDocument&) = delete;
    ProfileDocument& operator=(const ProfileDocument&) = delete;

    // False when writing would lose some of the file, because its characters could not all be read.
    bool isWhole() const { return m_encoding.isWhole(); }

    // Everything behind "=" with blanks removed at both ends; nothing for a missing key or a line without "=".
    std::optional<QString> value(const QString& section, const QString& key) const;

    // "key=value" and bare lines in file order, without comments and blank lines.
    // Lines of nothing but "=" are left out too.
    QStringList lines(const QString& section) const;
    bool hasSection(const QString& section) const;
    QStringList sections() const; // names, in no order

    // Sets a value, adding section and key as needed. True when the document changed. A character that the code page
    // lacks makes the whole file UTF-8.
    bool setValue(const QString& section, const QString& key, const QString& value);

    // Whether a section and key can be stored so that they are found again.
    static Result<> canStore(const QString& section, const QString& key);

    // A value without what cannot stand in a line: line breaks become blanks.
    static QString oneLine(QString value);

    // A text without the blanks around it, as a reader takes them away; the end-of-text mark of old files is one.
    static QStringView trimmed(QStringView text);

    QByteArray toBytes() const;

private:
    enum class LineEnd : quint8 { None, LineFeed, Return, Both };
    // Bytes, key and value may point into the text of the file: they do not leave this class.
    struct Line
    {
        QByteArray bytes; // without line end
        QString key;
        QString value;
        LineEnd end = LineEnd::None;
        bool hasValue = false;
        bool isBlank = false;
    };
    struct Section
    {
        QByteArray header; // bytes of the header line; empty for the lines before the first section
        LineEnd headerEnd = LineEnd::None;
        qsizetype begin = 0; // of its lines in the file
        qsizetype end = 0;
        bool isParsed = false;
        std::vector<Line> lines;
        QHash<ProfileName, size_t> keys; // -> first line that has it; empty while there are few lines
    };

    // One line of the file and where the next one begins.
    struct Span
    {
        qsizetype begin;
        qsizetype length; // without line end
        qsizetype next;
        LineEnd end;
        bool isAscii;
    };
    void parse(const QByteArray& bytes);
    Span spanAt(qsizetype pos) const;
    // The name between the brackets when the line begins a section, null when it does not.
    QString sectionName(const Span& span) const;
    Line parseSpan(const Span& span) const;
    enum class Characters {
        Shared, // with a text that outlives the line
        Owned
    };
    static Line parseLine(const QByteArray& bytes, QStringView text, Characters characters);
    Section& parsed(Section& section) const;
    static void indexKeys(Section& section);
    static std::optional<size_t> lineOf(const Section& section, const QString& key);
    Section* find(const QString& section);
    const Section* find(const QString& section) const { return const_cast<ProfileDocument*>(this)->find(section); }
    Section& findOrAdd(const QString& section);
    template <typename Convert> QByteArray joined(Convert convert) const; // all lines, each converted
    QByteArray inUtf8() const;

    ProfileEncoding m_encoding;
    QByteArray m_file;                       // as it was read
    QString m_text;                          // the same, character by byte: right for the ASCII lines
    LineEnd m_lineEnd = LineEnd::Both;       // of new lines: that of the first one
    mutable std::vector<Section> m_sections; // taken apart on demand
    QHash<ProfileName, size_t> m_index;
    mutable QString m_lastName; // the section asked for last; callers read section by section
    mutable size_t m_lastSection = 0;
};

} // namespace platform
