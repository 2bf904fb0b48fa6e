// Models for tests: on the DE405 file, or on the theories that are built in.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <random>

#include "core/instant.h"
#include "solsys/de_ephemeris.h"
#include "solsys/platform.h"
#include "solsys/solar_system.h"
#include "tests/support/geometry.h"

namespace solsys::test {

enum class Source { kDe405, kBuiltIn };

inline const char* name_of(Source source) {
    return source == Source::kDe405 ? "DE405" : "BuiltIn";
}

// The file is the process's: models of one kind at a time.
inline std::unique_ptr<CSWSolSys> make_model(Source source) {
    DE_Ephemeris::clear();
    StarwickPath::SetWorkPath(SOLSYS_BUILD_DIR "/no-such-folder");
    auto model = std::make_unique<CSWSolSys>();
    EXPECT_TRUE(model->InitSys(source == Source::kDe405 ? SOLSYS_DE405 : ""));
    EXPECT_EQ(model->HasEphemeris(), source == Source::kDe405);
    return model;
}

// A place on the surface of a planet; angles in degrees, height in km.
inline OBSERVER site(double longitude, double latitude, double height_km, int planet = 3) {
    OBSERVER out;
    out.kind = LOCATION_SURFACE;
    out.body_type = SSO_PLNT;
    out.body_number = planet;
    out.location[0] = height_km / kAuKm;
    out.location[1] = longitude * kDegree;
    out.location[2] = latitude * kDegree;
    return out;
}

// The centre of a body.
inline OBSERVER centre_of(int planet) {
    OBSERVER out;
    out.kind = LOCATION_BODY_FIXED;
    out.body_type = SSO_PLNT;
    out.body_number = planet;
    return out;
}

// The model's instant.
inline Instant time_of(const CSWSolSys& model) {
    Instant t{};
    model.GetTime(&t.day, &t.fraction);
    return t;
}

inline void update(CSWSolSys& model, double jd) {
    const Instant t = instant(jd);
    model.UpdateSys(t.day, t.fraction);
}

// Instants spread over 1960 to 2059, the same at every run.
class Instants {
  public:
    explicit Instants(unsigned seed) : random_(seed) {}
    Instant next() {
        const double jd = std::uniform_real_distribution(2436935.0, 2473450.0)(random_);
        const int day = static_cast<int>(jd);
        return {day, std::uniform_real_distribution(0.0, 1.0)(random_)};
    }

  private:
    std::mt19937_64 random_;
};

}  // namespace solsys::test
