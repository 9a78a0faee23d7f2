#pragma once

#include <QString>

// The text of a piece of HTML: without its marks, the usual entities as what they stand for, all white space as one
// blank.
QString htmlText(QString html);
