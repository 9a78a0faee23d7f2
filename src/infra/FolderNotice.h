#pragma once

#include <QString>
#include <QVector>

// Something about the program's folders that the person at the program has to know. The text is an English key, as the
// translator takes it; place and detail stand for its %1 and %2.
struct FolderNotice
{
    QString text;
    QString place;
    QString detail;

    QString in(const QString& translated) const { return translated.arg(place, detail); }
    QString english() const { return in(text); }
};

using FolderNotices = QVector<FolderNotice>;
