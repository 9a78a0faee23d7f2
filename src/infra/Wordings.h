#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

struct Context;

// What a text is called in every installed language: for a search that shall find it by any of its names. Holds the
// language files as they were when it was made; writes none.
class Wordings
{
public:
    Wordings() = default;
    explicit Wordings(const Context& context);

    // The text itself first, then its other names; a text that no language file knows has none.
    QStringList of(const QString& text) const;

private:
    void add(const QString& key, const QString& wording);

    QHash<QString, QStringList> m_wordings; // by key, the key first
    QHash<QString, QStringList> m_keys;     // by wording
};
