#include "RecentEntries.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "clsINI.h"

namespace {

const QString kRecentSection = QStringLiteral("Recent");

}

RecentEntries::RecentEntries(Context& context, QString kind, int most)
    : m_context(context), m_kind(std::move(kind)), m_most(most)
{
    clsINI ini = mainSettings(context);
    for (int i = 0; i < m_most; ++i) {
        const QString entry = ini.GetIniData(kRecentSection, keyOf(i), QString(), true);
        if (!entry.isEmpty() && !m_entries.contains(entry))
            m_entries << entry;
    }
}

QString RecentEntries::keyOf(qsizetype index) const
{
    return m_kind + QString::number(index + 1);
}

void RecentEntries::add(const QString& entry)
{
    m_entries.removeAll(entry);
    m_entries.prepend(entry);
    m_entries = m_entries.mid(0, m_most);
    store();
}

void RecentEntries::remove(const QString& entry)
{
    if (m_entries.removeAll(entry) > 0)
        store();
}

void RecentEntries::clear()
{
    m_entries.clear();
    store();
}

void RecentEntries::store()
{
    clsINI ini = mainSettings(m_context);
    IniBatch batch(m_context);
    for (int i = 0; i < m_most; ++i) {
        const QString stored = m_entries.value(i);
        if (ini.GetIniData(kRecentSection, keyOf(i), QString(), true) != stored)
            ini.PutIniData(kRecentSection, keyOf(i), stored);
    }
    batch.commitLogged();
}
