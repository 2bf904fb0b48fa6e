// A host whose own functions have names of the library's toolkit. Each of them answers nonsense
// and remembers that it was called: the library must neither call nor be changed by them.
#include <cmath>
#include <cstdio>

#include "solsys/solar_system.h"

namespace {
int calls = 0;
template <class T>
T nonsense(T value) {
    ++calls;
    return value;
}
}  // namespace

extern "C" {
double SVprod(const double*, const double*, short) { return nonsense(-7.0); }
double Vmod(const double*, short) { return nonsense(-7.0); }
void Vadd(const double*, const double*, double* out) { out[0] = nonsense(-7.0); }
void Vprod(const double*, const double*, double* out) { out[0] = nonsense(-7.0); }
void Vnorm2(double* v) { v[0] = nonsense(-7.0); }
void MV3prod(const double*, const double*, double* out) { out[0] = nonsense(-7.0); }
void M3prod(const double*, const double*, double* out) { out[0] = nonsense(-7.0); }
void psf(const double*, double, double* out) { out[0] = out[1] = out[2] = nonsense(-7.0); }
void psf1(const double*, double, double* out) { out[0] = out[1] = out[2] = nonsense(-7.0); }
void sfp(const double*, double* out) { out[0] = out[1] = out[2] = nonsense(-7.0); }
double fmSin(double) { return nonsense(-7.0); }
double fmCos(double) { return nonsense(-7.0); }
double sign(double, double) { return nonsense(-7.0); }
}
// The prescribed plain functions with C++ names.
void JD(int, double, short*, short*, short*, double*, short*, short*, double*) { nonsense(0); }
void DJ(int*, double*, short, short, short, short, short, double) { nonsense(0); }
double SiderialTime(bool, int, double) { return nonsense(-7.0); }
void NutBretagnon(int, double, double* a, double* b, double* c) {
    *a = *b = *c = nonsense(-7.0);
}

int main() {
    CSWSolSys model;
    model.InitSys("");
    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[1] = 0.1, site.location[2] = 0.9;
    model.SetObserver(&site);
    model.UpdateSys(2461000, 0.25);
    double jupiter[3] = {}, io[3] = {};
    const bool known = model.GetRADecVis(SSO_ID(SSO_PLNT, 5), jupiter, 0.0) &&
                       model.GetRADecVis(SSO_ID(SSO_MOON, 501), io, 0.0);
    // Jupiter is never nearer than 3.9 au nor farther than 6.5, and Io stands beside it.
    const bool sane = jupiter[0] > 3.9 && jupiter[0] < 6.5 &&
                      std::fabs(io[1] - jupiter[1]) < 0.01 &&
                      std::fabs(io[2] - jupiter[2]) < 0.01;
    std::printf("Jupiter %.9f au, %.9f, %.9f rad; %d calls of the host's functions\n",
                jupiter[0], jupiter[1], jupiter[2], calls);
    return known && sane && calls == 0 ? 0 : 1;
}
