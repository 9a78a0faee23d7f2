#include "frmProgbar.h" // a higher floor
