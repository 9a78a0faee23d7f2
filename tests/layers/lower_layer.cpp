#include "clsINI.h" // a lower layer
