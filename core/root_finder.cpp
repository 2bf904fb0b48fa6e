#include "core/root_finder.h"

#include "solsys/toolkit.h"

double Zeroin(double a, double b, double (*f)(double), double tol) {
    return solsys::zeroin(a, b, f, tol);
}
