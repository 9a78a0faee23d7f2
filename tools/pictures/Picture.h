#pragma once

#include <QString>

class QWidget;

// A picture of the window as a person sees it on the desktop, with its title, written as FOLDER/NAME.png. Fails the
// program when it cannot be written.
void takePicture(QWidget& window, const QString& folder, const QString& name);
