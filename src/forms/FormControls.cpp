#include "FormControls.h"

namespace platform {

QString FormControl::partProperty(int, FormProperty) const
{
    return {};
}

void FormControl::setPartProperty(int, FormProperty, const QString&) {}

} // namespace platform
