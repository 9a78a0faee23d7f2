#pragma once

class QWidget;

namespace platform {

// A label looks for HTML in its text unless it is told otherwise, and a text from outside may name any file in it. Here
// every label shows its text as it is, those that Qt itself makes too: tool tips, message boxes, file dialogs. A label
// that is set to rich text by its own form keeps it.

// For all labels of the application, from the moment they are first shown. More calls change nothing.
void showTextsPlain();

// For the widget and what is in it now, at once: the room that a text takes may be asked before it is shown.
void showTextsPlain(QWidget& widget);

} // namespace platform
