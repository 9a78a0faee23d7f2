#pragma once

#include <QByteArray>

// Bytes with a lower bound: the values of a reply count from 1, an image of the controller's memory from 0 or 1.
struct IndexedBytes
{
    int lower = 0;
    QByteArray bytes;

    int upper() const { return lower + static_cast<int>(bytes.size()) - 1; }
    bool contains(qint64 index) const { return index >= lower && index <= upper(); }
    quint8 at(qint64 index) const { return contains(index) ? static_cast<quint8>(bytes[index - lower]) : 0; }
    void set(qint64 index, quint8 value) // outside: ignored
    {
        if (contains(index))
            bytes[index - lower] = static_cast<char>(value);
    }
};
