#pragma once

#include "RecentEntries.h"

struct Context;

// The parameter files that were opened or saved last, the newest first, kept in section "Recent" of the main settings
// file as "File1", "File2" and so on. Paths are the machine's.
class RecentFiles
{
public:
    static constexpr int kMax = 8;

    explicit RecentFiles(Context& context);

    QStringList files() const;
    void add(const QString& file);    // to the front
    void remove(const QString& file); // one that cannot be opened any more
    void clear() { m_paths.clear(); }

private:
    Context& m_context;
    RecentEntries m_paths; // the desktop's
};
