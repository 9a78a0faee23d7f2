// What the files of a definition say of each other: images and the items in them, tags and sections by name.
#include "DefinitionFindings.h"
#include "ModelCodes.h"
#include "WrittenItems.h"
#include "clsKX.h"

#include <QSet>

#include <algorithm>

namespace {

constexpr int kMaxReadBytes = 120; // that one reply of the controller can carry

// Which bits of an image belong to an item, and to which.
class UsedBytes
{
public:
    UsedBytes(DefinitionFindings& findings, const clsKXAdr& image)
        : m_findings(findings), m_image(image), m_start(image.StartAddress().toInt(nullptr, 16)),
          m_bytes(static_cast<size_t>(image.imageSize()))
    {}

    void add(const clsData& item)
    {
        const int offset = item.Address().toInt(nullptr, 16) - m_start;
        if (offset < 0 || item.DataLen() < 1 || offset + item.DataLen() > m_image.imageSize()) {
            m_findings.addToItem(item, QStringLiteral("KXAddress"),
                                 QStringLiteral("lies outside the memory that [%1] reads").arg(m_image.Section()),
                                 QStringLiteral("correct KXAddress or DataLen, or read more bytes"));
            return;
        }
        const int bits = item.MType() == ItemType::Bit ? item.BitMask() : 0xFF;
        if (bits == 0)
            m_findings.addToItem(item, QStringLiteral("BitMask"), QStringLiteral("has no bit of its byte"),
                                 QStringLiteral("give 1, 2, 4, 8, 16, 32, 64 or 128"));
        for (int i = offset; i < offset + item.DataLen(); ++i)
            addByte(item, i, bits);
    }

    void reportGap() const
    {
        const auto isFree = [](const Byte& byte) { return byte.bits == 0; };
        const auto first = std::find_if(m_bytes.begin(), m_bytes.end(), isFree);
        if (first == m_bytes.end())
            return;
        const auto count = std::count_if(first, m_bytes.end(), isFree);
        m_findings.addToComm(m_image.Section(), {},
                             QStringLiteral("bytes of no parameter are read: %1, the first at %2")
                                 .arg(count)
                                 .arg(modelcodes::memoryText(m_start + static_cast<int>(first - m_bytes.begin()))),
                             QStringLiteral("read fewer bytes, or describe what they hold"));
    }

private:
    struct Byte
    {
        QString tag;
        int bits = 0;
    };

    void addByte(const clsData& item, int index, int bits)
    {
        Byte& byte = m_bytes[static_cast<size_t>(index)];
        if ((byte.bits & bits) != 0)
            m_findings.addToItem(item, QStringLiteral("KXAddress"),
                                 QStringLiteral("shares memory with %1").arg(byte.tag),
                                 QStringLiteral("give each parameter bytes or bits of its own"));
        byte.bits |= bits;
        byte.tag = item.Key();
    }

    DefinitionFindings& m_findings;
    const clsKXAdr& m_image;
    const int m_start;
    std::vector<Byte> m_bytes;
};

void checkImage(DefinitionFindings& findings, const clsKXAdr& image)
{
    if (image.imageSize() < 1 || image.imageSize() > kMaxReadBytes)
        findings.addToComm(image.Section(), {}, QStringLiteral("%1 bytes in one read").arg(image.imageSize()),
                           QStringLiteral("read 1 to %1 bytes").arg(kMaxReadBytes));
    UsedBytes used(findings, image);
    for (const auto& item : findings.kx().items()) {
        if (item->RSection() == image.Section())
            used.add(*item);
    }
    used.reportGap();
}

// Finds a tag exactly: a look-up also takes tags with a number behind, which a definition does not mean.
class KnownTags
{
public:
    explicit KnownTags(const clsKX& kx)
    {
        for (const auto& item : kx.items())
            m_tags.insert(item->Key());
    }

    bool contains(const QString& tag) const { return m_tags.contains(tag); }
    static QString fault(const QString& tag) { return QStringLiteral("there is no parameter %1").arg(tag); }
    static QString remedy() { return QStringLiteral("name a tag that the model has"); }

private:
    QSet<QString> m_tags;
};

// The tags that the decimal places and the limits of an item refer to.
QStringList referencesOf(const clsData& item)
{
    QStringList tags{item.decimalsReference()};
    for (const QString& limit : {item.limitTexts().definedLower, item.limitTexts().definedUpper}) {
        if (limit.startsWith(u"TAG", Qt::CaseInsensitive))
            tags << limit.mid(3);
    }
    tags.removeAll(QString());
    return tags;
}

void checkItem(DefinitionFindings& findings, const KnownTags& tags, const clsData& item)
{
    for (const QString& tag : referencesOf(item)) {
        if (!tags.contains(tag))
            findings.addToItem(item, QStringLiteral("DataInfo"),
                               QStringLiteral("refers to %1, which does not exist").arg(tag), KnownTags::remedy());
    }
    if (item.RSection().isEmpty() && item.Visible())
        findings.addToItem(item, QStringLiteral("CommRaedSection"), QStringLiteral("is never read"),
                           QStringLiteral("name the section of the comm file that reads it"));
    if (item.Class() == ParameterClass::Measured && isWritten(findings.kx().data(), item))
        findings.addToItem(item, QStringLiteral("Class"), QStringLiteral("is measured, but a write command carries it"),
                           QStringLiteral("name another class, or give ReadOnly=True"));
    if (!item.WSection().isEmpty() && findings.kx().ColAdr().find(item.WSection()) == nullptr)
        findings.addToItem(item, QStringLiteral("CommWriteSection"),
                           QStringLiteral("is never written, because nothing reads [%1]").arg(item.WSection()),
                           QStringLiteral("name a section that some parameter reads"));
}

void checkCommands(DefinitionFindings& findings, const KnownTags& tags, const clsKXAdr& image)
{
    for (int i = 1; i <= image.MsgMax(); ++i) {
        if (!image.Tag(i).isEmpty() && !tags.contains(image.Tag(i)))
            findings.addToComm(image.Section(), QStringLiteral("ReadCmd%1").arg(i), KnownTags::fault(image.Tag(i)),
                               KnownTags::remedy());
    }
    for (int i = 1; i <= image.WMsgMax(); ++i) {
        const QString tag = image.WTag(i);
        if (image.WCmd(i) != u"Direct" && !tag.startsWith(u"&h") && !tags.contains(tag))
            findings.addToComm(image.Section(), QStringLiteral("WriteCmd%1").arg(i), KnownTags::fault(tag),
                               KnownTags::remedy());
    }
}

// What the entries of a selection table set.
void checkTable(DefinitionFindings& findings, const KnownTags& tags, const QString& table)
{
    for (const QString& line : findings.tableLines(table)) {
        const QString key = line.section(u'=', 0, 0);
        const QStringList targets = key.startsWith(u"SetTags") ? line.section(u'=', 1).split(u',') : QStringList();
        for (const QString& target : targets) {
            const QString tag = target.trimmed().mid(4);
            const bool isTarget = target.trimmed().startsWith(u"tagD") || target.trimmed().startsWith(u"tagV");
            if (isTarget && !tags.contains(tag))
                findings.add(
                    {DefinitionFindings::tablesFile(), table, key, KnownTags::fault(tag), KnownTags::remedy()});
        }
    }
}

} // namespace

void definitionRules::checkImages(DefinitionFindings& findings)
{
    const ImageCollection& images = findings.kx().ColAdr();
    for (int i = 0; i < images.count(); ++i) {
        if (!images.at(i).m_bModbus)
            checkImage(findings, images.at(i));
    }
}

void definitionRules::checkReferences(DefinitionFindings& findings)
{
    const KnownTags tags(findings.kx());
    for (const auto& item : findings.kx().items())
        checkItem(findings, tags, *item);
    for (const QString& table : findings.tables())
        checkTable(findings, tags, table);
    const ImageCollection& images = findings.kx().ColAdr();
    for (int i = 0; i < images.count(); ++i)
        checkCommands(findings, tags, images.at(i));
}
