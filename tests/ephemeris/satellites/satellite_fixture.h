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

namespace solsys::test {

inline std::string reference_file(const std::string& name) {
    return std::string(SOLSYS_TEST_DATA) + "/reference/" + name;
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
        switch (system) {
            case 4:
                return mars.AsTheory();
            case 5:
                return jupiter.AsTheory();
            case 6:
                return saturn.AsTheory();
            case 7:
                return uranus.AsTheory();
            case 8:
                return neptune.AsTheory();
            case 9:
                return pluto.AsTheory();
            case 12:
                return eris.AsTheory();
            default:
                return haumea.AsTheory();
        }
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

inline double angle_between(Vec3 a, Vec3 b) { return std::atan2(norm(cross(a, b)), dot(a, b)); }

// Direction of a pole from right ascension and declination [deg].
inline Vec3 direction(double ra_deg, double dec_deg) {
    const double ra = ra_deg * kDegree, dec = dec_deg * kDegree;
    return {std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)};
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
