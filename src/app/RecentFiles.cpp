#include "RecentFiles.h"

#include "Context.h"
#include "Machine.h"

RecentFiles::RecentFiles(Context& context) : m_context(context), m_paths(context, QStringLiteral("File"), kMax) {}

QStringList RecentFiles::files() const
{
    QStringList files;
    for (const QString& path : m_paths.entries())
        files << m_context.machine.paths.toMachine(path);
    files.removeDuplicates();
    return files;
}

void RecentFiles::add(const QString& file)
{
    remove(file);
    m_paths.add(m_context.machine.paths.toDesktop(file));
}

void RecentFiles::remove(const QString& file)
{
    for (const QString& path : QStringList(m_paths.entries())) {
        if (m_context.machine.paths.toMachine(path) == file)
            m_paths.remove(path);
    }
}
