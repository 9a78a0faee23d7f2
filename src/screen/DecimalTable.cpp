#include "DecimalTable.h"

#include "clsINI.h"
#include "clsLibrary.h"

#include <QStringList>
#include <algorithm>

void DecimalTable::load(clsINI& ini, const QString& section, const clsLibrary& library)
{
    const int lastInFile =
        library.toLong(ini.GetIniData(section, QStringLiteral("LastIndex"), QStringLiteral("-1"), true), 0);
    const int last = std::min(lastInFile, kRows - 1);
    for (int row = 0; row <= last; ++row) {
        const QStringList fields =
            ini.GetIniData(section, QString::number(row), QStringLiteral("1,1,1,1"), false).split(u',');
        for (int col = 0; col < kFilledCols; ++col)
            m_places[row][col] = library.toLong(fields.value(col), 0);
    }
}

int DecimalTable::at(int row, int col) const
{
    if (row < 0 || row >= kRows || col < 0 || col >= kCols)
        return 0;
    return m_places[row][col];
}
