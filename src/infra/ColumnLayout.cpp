#include "ColumnLayout.h"

#include "Conversions.h"
#include "FileLocations.h"
#include "GridModel.h"
#include "IniBatch.h"
#include "Numbers.h"
#include "Zoom.h"
#include "clsINI.h"

namespace {

constexpr double kWidest = 500; // average characters

QString keyOf(int column)
{
    return QStringLiteral("SPCOLWIDTH") + QString::number(column);
}

const QString kZoomKey = QStringLiteral("GRIDZOOM");

} // namespace

void columnlayout::load(Context& context, platform::GridModel& grid, const QString& section, const QString& fileName)
{
    IniBatch batch(context);
    clsINI ini = layoutFile(context, fileName);
    grid.beginUpdate();
    for (int column = 0; column <= grid.maxCols(); ++column) {
        const double current = grid.colWidth(column);
        const QString text = ini.GetIniData(section, keyOf(column), platform::doubleText(current));
        const double stored = convert::toDouble(text, current);
        grid.setColWidth(column, stored >= 0 && stored <= kWidest ? stored : current);
    }
    grid.endUpdate();
    batch.commitLogged();
}

void columnlayout::save(Context& context, const platform::GridModel& grid, const QString& section,
                        const QString& fileName)
{
    IniBatch batch(context);
    clsINI ini = layoutFile(context, fileName);
    for (int column = 0; column <= grid.maxCols(); ++column)
        ini.PutIniData(section, keyOf(column), grid.colWidth(column));
    batch.commitLogged();
}

// A number that is none, or no size to work with, is the plain one.
int columnlayout::loadZoom(Context& context, const QString& section)
{
    const QString text = layoutFile(context).GetIniData(section, kZoomKey, QString(), true);
    const int stored = convert::toLong(text, platform::kPlainZoom);
    return stored >= platform::kSmallestZoom && stored <= platform::kLargestZoom ? stored : platform::kPlainZoom;
}

void columnlayout::saveZoom(Context& context, const QString& section, int percent)
{
    layoutFile(context).PutIniData(section, kZoomKey, percent);
}
