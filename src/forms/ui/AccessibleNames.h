#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace platform {

// A caption as it is spoken: without the mark of its access key ("&Port:" is "Port", "ポート(&P)" is "ポート").
QString spokenCaption(const QString& caption);

// Gives a field the name that stands beside it. Call it again when the caption has been translated.
void nameField(QWidget& field, const QString& caption);

// Names a widget that has no caption beside it, with a key of the language files.
void nameWidget(QWidget& widget, const QString& english);
// Translates the names that nameWidget has given in this window.
void translateNames(QWidget& window, const std::function<QString(const QString&)>& tran);

} // namespace platform
