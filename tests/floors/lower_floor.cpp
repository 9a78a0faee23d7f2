#include "clsINI.h" // a lower floor
