#include "Faults.h" // a side layer
