#pragma once

#include <QString>
#include <QStringList>

struct Context;

// What was used last, the newest first, kept in section "Recent" of the main settings file under the keys "KIND1",
// "KIND2" and so on. An entry is there once.
class RecentEntries
{
public:
    // most: entries that are kept.
    RecentEntries(Context& context, QString kind, int most);

    const QStringList& entries() const { return m_entries; }
    void add(const QString& entry); // to the front
    void remove(const QString& entry);
    void clear();

private:
    QString keyOf(qsizetype index) const;
    void store();

    Context& m_context;
    QString m_kind;
    int m_most;
    QStringList m_entries;
};
