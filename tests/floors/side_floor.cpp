#include "Faults.h" // a side floor
