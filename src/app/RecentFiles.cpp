#include "RecentFiles.h"

#include "FileLocations.h"
#include "IniBatch.h"
#include "clsINI.h"

namespace {

const QString kSection = QStringLiteral("Recent");

QString keyOf(qsizetype index)
{
    return QStringLiteral("File%1").arg(index + 1);
}

} // namespace

RecentFiles::RecentFiles(Context& context) : m_context(context)
{
    clsINI ini = mainSettings(context);
    for (int i = 0; i < kMax; ++i) {
        const QString file = context.machine.paths.toMachine(ini.GetIniData(kSection, keyOf(i), QString(), true));
        if (!file.isEmpty() && !m_files.contains(file))
            m_files << file;
    }
}

void RecentFiles::add(const QString& file)
{
    m_files.removeAll(file);
    m_files.prepend(file);
    m_files = m_files.mid(0, kMax);
    store();
}

void RecentFiles::remove(const QString& file)
{
    if (m_files.removeAll(file) > 0)
        store();
}

void RecentFiles::clear()
{
    m_files.clear();
    store();
}

void RecentFiles::store()
{
    clsINI ini = mainSettings(m_context);
    IniBatch batch(m_context);
    for (int i = 0; i < kMax; ++i) {
        const QString stored = i < m_files.size() ? m_context.machine.paths.toDesktop(m_files.at(i)) : QString();
        if (ini.GetIniData(kSection, keyOf(i), QString(), true) != stored)
            ini.PutIniData(kSection, keyOf(i), stored);
    }
    batch.commitLogged();
}
