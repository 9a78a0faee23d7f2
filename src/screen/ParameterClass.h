#pragma once

#include <QString>

#include <optional>

// What sending a parameter means, as the definition's key "Class" says.
enum class ParameterClass {
    Setting,     // may go from one controller to another
    Calibration, // belongs to this one instrument: sensor correction, trims
    Line,        // how the controller is reached: address, speed, format, protocol
    Command,     // starts or stops something
    Measured     // never written
};

QString parameterClassName(ParameterClass which);                    // as in a definition: "setting"
std::optional<ParameterClass> parameterClassOf(const QString& name); // in lower or upper case
