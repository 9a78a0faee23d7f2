#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

class clsData;

// A group of data items that belong together on the screen, with relay blocks that are handled together with it.
// The items belong to clsKX; a block only refers to them.
class clsBlock
{
public:
    int m_lNo = 0;
    QString m_sName;

    void setData(clsData* item); // joins the block; a tag joins once
    const std::vector<clsData*>& Tags() const { return m_tags; }
    int Count() const { return static_cast<int>(m_tags.size()); }
    void removeData();

    void setRelayBlock(const QString& sRelay); // block numbers separated by ","
    QString RelayBlock() const { return m_relayText; }
    QString getRelayBlock(int i) const; // entry i, 0-based; empty outside the list

private:
    QString m_relayText;
    QStringList m_relayList;
    std::vector<clsData*> m_tags;
    QSet<QString> m_keys;
};
