#pragma once

#include <QFile>
#include <QList>
#include <QStringList>
#include <stdexcept>

// The rows of a table under tests/data, which must be there: UTF-8, fields between tabs, the first one the row's name.
// Lines that begin with "#" are remarks; \n, \r, \t, \\ and \xNN stand for the
// characters.
inline QList<QStringList> tableRows(const char* name)
{
    QFile file(QStringLiteral(VORLANT_TEST_DATA "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no table " + file.fileName().toStdString());
    QList<QStringList> rows;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u'#'))
            continue;
        QStringList fields = line.split(u'\t');
        for (QString& field : fields) {
            for (qsizetype at = field.indexOf(u'\\'); at >= 0; at = field.indexOf(u'\\', at + 1)) {
                const QChar kind = at + 1 < field.size() ? field[at + 1] : QChar();
                const bool isCode = kind == u'x';
                const auto plain = QStringLiteral("nrt").indexOf(kind);
                const QChar code(field.mid(at + 2, 2).toUShort(nullptr, 16));
                field.replace(at, isCode ? 4 : 2, isCode ? code : plain < 0 ? kind : QChar("\n\r\t"[plain]));
            }
        }
        rows << fields;
    }
    if (rows.isEmpty())
        throw std::runtime_error("an empty table " + file.fileName().toStdString());
    return rows;
}
