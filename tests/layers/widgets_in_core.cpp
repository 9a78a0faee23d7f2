#include <QWidget> // a core library knows no widgets
