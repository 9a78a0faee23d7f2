#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

// One parameter of a write: stored texts, and its name as the person at the program saw it.
struct JournalParameter
{
    QString tag;
    QString name;
    QString held; // what the controller held before; empty when that is not known
    QString value;
    QString outcome;        // English; empty while the write has begun only
    QString heldShown = {}; // as the person at the program saw it; empty: as it is stored
    QString valueShown = {};
    QString unit = {}; // of both as they are shown; empty for none
};

// One write to a controller.
struct JournalEntry
{
    QString id; // a UUID
    QDateTime begunAt;
    QDateTime endedAt; // not valid while the write has begun only
    QString user;
    QString version; // of the program
    QString cause;
    QString device; // machine path
    int slave = 0;
    QString mode; // "RTU" or "ASCII"
    QString model;
    QString outcome;            // of the whole write, English; empty while it has begun only
    bool isInterrupted = false; // begun and never completed, and its process is no more
    QVector<JournalParameter> parameters;
};
