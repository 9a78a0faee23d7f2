#pragma once

#include <QString>

class QWidget;

namespace platform {

// A caption as it is spoken: without the mark of its access key ("&Port:" is "Port", "ポート(&P)" is "ポート").
QString spokenCaption(const QString& caption);

// Gives a field the name that stands beside it. Call it again when the caption has been translated.
void nameField(QWidget& field, const QString& caption);

} // namespace platform
