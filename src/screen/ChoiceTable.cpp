#include "ChoiceTable.h"

#include "Comparison.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>

namespace {

constexpr int kDataFields = 27;
constexpr int kNameFields = 10;
const QString kSeparator = QStringLiteral("vbTab");
constexpr int kIdentifying = 1; // the data element that is the item's own value
const QString kStored = QStringLiteral("tagD");
const QString kDisplay = QStringLiteral("tagV");
const QString kEndName = QStringLiteral("Test");

QString repeated(const QString& text, int count, const QString& separator)
{
    return QStringList(count, text).join(separator);
}

QString defaultTags()
{
    QStringList tags;
    for (int i = 1; i <= 12; ++i)
        tags << QStringLiteral("Tag%1").arg(i);
    return tags.join(u',');
}

} // namespace

void ChoiceTable::load(clsINI& ini, const QString& section, const clsLibrary& library)
{
    m_entries.clear();
    if (section.isEmpty())
        return;
    const QString tags = defaultTags();
    const QString data = repeated(QStringLiteral("0"), kDataFields, QStringLiteral(","));
    const QString names = repeated(kEndName, kNameFields, kSeparator);
    for (int i = 1; i <= kMaxEntries; ++i) {
        const QString n = QString::number(i);
        Entry entry;
        entry.dataCount =
            library.toLong(ini.GetIniData(section, QStringLiteral("DataCount") + n, QStringLiteral("50")), 0);
        entry.tags = ini.GetIniData(section, QStringLiteral("SetTags") + n, tags).split(u',');
        entry.data = ini.GetIniData(section, QStringLiteral("Data") + n, data).split(u',');
        entry.names = ini.GetIniData(section, QStringLiteral("Name") + n, names).split(kSeparator);
        if (entry.names.value(0) == kEndName)
            return;
        m_entries.push_back(entry);
    }
}

std::vector<EntrySetting> ChoiceTable::Entry::settings(qsizetype from) const
{
    std::vector<EntrySetting> settings;
    for (qsizetype i = from; i < std::min(tags.size(), data.size()); ++i) {
        const QString target = tags[i].trimmed();
        const bool isDisplay = target.startsWith(kDisplay);
        if ((isDisplay || target.startsWith(kStored)) && target.size() > kStored.size())
            settings.push_back({target.mid(kStored.size()), data[i].trimmed(), isDisplay});
    }
    return settings;
}

// The item comes first: its own table gives the limits that the others are held against.
std::vector<EntrySetting> ChoiceTable::Entry::settingsFor(const QString& itemTag) const
{
    if (value().isEmpty())
        return {};
    std::vector<EntrySetting> all = settings(kIdentifying);
    all.insert(all.begin(), {itemTag, value(), false});
    return all;
}

QString ChoiceTable::nameOf(const QString& storedValue) const
{
    for (const Entry& entry : m_entries) {
        if (isSameNumber(entry.data.value(kIdentifying), storedValue))
            return entry.names.value(0);
    }
    return {};
}
