#pragma once

#include <QLockFile>
#include <QString>

namespace platform {

// Whether another copy of the same executable runs for the same user. The first one holds a lock for as long as the
// object lives; a copy that was killed leaves none behind.
class SingleInstance
{
public:
    // lockFolder: where locks of this user are kept; empty for the temporary folder.
    explicit SingleInstance(const QString& executable, const QString& lockFolder = QString());

    bool isFirst() const { return m_first; }

private:
    QLockFile m_lock;
    bool m_first;
};

} // namespace platform
