#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// What the communication settings offer for a line, the usual ones first. A stored value that is none of these is
// offered besides.
namespace linechoices {

struct Format
{
    QString chara;   // "N,8,1"
    QString control; // by which language files name its button
    QString caption; // English
};

const QList<Format>& formats();
const QStringList& speeds(); // "9600"

bool isOffered(const QString& chara);

} // namespace linechoices
