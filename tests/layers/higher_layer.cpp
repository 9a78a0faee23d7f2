#include "frmProgbar.h" // a higher layer
