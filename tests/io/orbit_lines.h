// Orbits printed in the two one-line formats, column by column as the formats are described.
#pragma once

#include <cstdio>
#include <string>

#include "io/comets.h"
#include "io/minor_planets.h"

namespace solsys_io {

struct PrintedPlanet {
    const char* packed = "00001";
    const char* H = " 3.34";
    const char* G = " 0.12";
    const char* epoch = "K239D";
    double M = 60.07881, peri = 73.42179, node = 80.25496, incl = 10.58688;
    double e = 0.0789126, n = 0.21406009, a = 2.7672543;
    const char* words = "     (1) Ceres";
};

inline std::string print(const PrintedPlanet& p) {
    char line[256];
    std::snprintf(
        line, sizeof line,
        "%-7s %5s %5s %5s %9.5f  %9.5f  %9.5f  %9.5f  %9.7f %11.8f %11.7f  0 MPO719049"
        "  7258 122 1801-2023 0.65 M-v 30k MPCLINUX   4000 %-28s20230321",
        p.packed, p.H, p.G, p.epoch, p.M, p.peri, p.node, p.incl, p.e, p.n, p.a, p.words);
    return line;
}

struct PrintedComet {
    const char* number = "    ";
    char kind = 'C';
    const char* perihelion = "1997 04 01.1375";
    double q = 0.914142, e = 0.995086, peri = 130.5887, node = 282.4707, incl = 89.4300;
    const char* epoch = "20220809";
    const char* H = "-2.0";
    const char* slope = " 4.0";
    const char* name = "C/1995 O1 (Hale-Bopp)";
};

inline std::string print(const PrintedComet& c) {
    char line[256];
    std::snprintf(line, sizeof line,
                  "%4s%c%9s%15s %9.6f  %8.6f  %8.4f  %8.4f  %8.4f  %8s  %4s %4s  %-56s MPC 1",
                  c.number, c.kind, "", c.perihelion, c.q, c.e, c.peri, c.node, c.incl, c.epoch,
                  c.H, c.slope, c.name);
    return line;
}

}  // namespace solsys_io
