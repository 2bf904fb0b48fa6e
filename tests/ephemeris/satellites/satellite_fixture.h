// Access to every satellite by its body number, through the interface that all theories share.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "core/constants.h"
#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/satellite_theory.h"
#include "tests/support/csv.h"
#include "tests/support/geometry.h"

namespace solsys::test {

inline std::string reference_file(const std::string& name) {
    std::string path = SOLSYS_TEST_DATA "/reference/";
    path += name;
    return path;
}

struct Theories {
    MartianSat mars;
    JupiterSat jupiter;
    SaturnSat saturn;
    UraSat uranus;
    NepSat neptune;
    PlutoSat pluto;
    ErisSat eris;
    HaumeaSat haumea;

    SatTheory& of_system(int system) {
        return system == 4    ? mars.AsTheory()
               : system == 5  ? jupiter.AsTheory()
               : system == 6  ? saturn.AsTheory()
               : system == 7  ? uranus.AsTheory()
               : system == 8  ? neptune.AsTheory()
               : system == 9  ? pluto.AsTheory()
               : system == 12 ? eris.AsTheory()
                              : haumea.AsTheory();
    }

    // NaN throughout when the theory refuses.
    State state(int body, Instant t) {
        double out[6] = {NAN, NAN, NAN, NAN, NAN, NAN};
        of_system(body / 100).GetSatVector(t.day, t.fraction, body % 100, 1, out);
        return load_state(out);
    }
};

inline Instant later(Instant t, double days) {
    const double whole = std::floor(t.fraction + days);
    return {t.day + static_cast<int>(whole), t.fraction + days - whole};
}

// Direction of a pole from right ascension and declination [deg].
inline Vec3 pole_at(double ra_deg, double dec_deg) {
    return direction(ra_deg * kDegree, dec_deg * kDegree);
}

struct Period {
    int body;
    double days;
};
inline std::vector<Period> published_periods() {
    std::vector<Period> periods;
    for (const CsvRow& row : read_csv(reference_file("satellite_periods.csv")))
        periods.push_back({std::stoi(row[0]), std::stod(row[1])});
    return periods;
}

}  // namespace solsys::test
