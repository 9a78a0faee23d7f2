#include "ParameterClass.h"

#include <QStringList>

namespace {

const QStringList kNames{QStringLiteral("setting"), QStringLiteral("calibration"), QStringLiteral("line"),
                         QStringLiteral("command"), QStringLiteral("measured")};

} // namespace

QString parameterClassName(ParameterClass which)
{
    return kNames.at(static_cast<int>(which));
}

std::optional<ParameterClass> parameterClassOf(const QString& name)
{
    const auto index = kNames.indexOf(name.trimmed().toLower());
    return index < 0 ? std::nullopt : std::optional(static_cast<ParameterClass>(index));
}
