#include "core/fast_trig.h"

#include "solsys/toolkit.h"

double fmSin(double x) { return solsys::fm_sin(x); }
double fmCos(double x) { return solsys::fm_cos(x); }
