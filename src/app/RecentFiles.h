#pragma once

#include <QString>
#include <QStringList>

struct Context;

// The parameter files that were opened or saved last, the newest first, kept in section "Recent" of the main settings
// file as "File1", "File2" and so on. Paths are the machine's.
class RecentFiles
{
public:
    static constexpr int kMax = 8;

    explicit RecentFiles(Context& context);

    const QStringList& files() const { return m_files; }
    void add(const QString& file);    // to the front
    void remove(const QString& file); // one that cannot be opened any more
    void clear();

private:
    void store();

    Context& m_context;
    QStringList m_files;
};
