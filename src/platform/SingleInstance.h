#pragma once

#include <QString>

namespace platform {

// Whether another copy of the same executable runs for the same user. The first one holds a lock for as long as the
// object lives; the system takes the lock away from a process that ends, however it ends. A lock file that is not this
// user's own, and one that cannot be made, stops nobody.
class SingleInstance
{
public:
    // lockFolder: where locks of this user are kept; empty for the temporary folder.
    explicit SingleInstance(const QString& executable, const QString& lockFolder = QString());
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    bool isFirst() const { return m_isFirst; }
    QString lockFile() const { return m_path; }
    // Where the first one may be spoken to (InstanceChannel.h); each display has a first one of its own.
    QString socketFile(const QString& display) const;
    QString holder() const { return m_holder; } // number of the process that was first; empty when it is this one

private:
    bool tryLock(); // false when the file went away in between

    QString m_place; // what its files begin with
    QString m_path;
    int m_file = -1;
    bool m_isFirst = true;
    QString m_holder;
};

} // namespace platform
