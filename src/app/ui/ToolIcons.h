#pragma once

#include <QIcon>
#include <QString>

// One family of icons, drawn in two colours that are replaced by those of the desktop's theme when they are painted:
// dark lines on a light desktop, light ones on a dark one, sharp at every scale.
//
// name: "Open", "Save", "Comm", "Option", "Exit", "Recv", "Send", "Version", "Help" (the keys of the toolbar),
// "Traffic". An unknown name gives an empty icon.
QIcon toolIcon(const QString& name);
