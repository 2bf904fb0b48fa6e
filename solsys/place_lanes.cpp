#include "solsys/place_lanes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ephemeris/planet_states.h"
#include "platform/cpu_features.h"
#include "solsys/light_time.h"
#include "solsys/reduction.h"

namespace solsys {
namespace {

// As in apparent_modern: what is left may be applied along a straight line.
constexpr double kStraightLineOfLanes = 2e-5;  // day

template <class Function>
Function* of_processor(Function* baseline, Function* avx2, Function* avx512) {
    if (cpu_has_avx512()) return avx512;
    return cpu_has_avx2() ? avx2 : baseline;
}

void put(Vec3 v, std::size_t lane, LaneVector& out) {
    out[0][lane] = v.x, out[1][lane] = v.y, out[2][lane] = v.z;
}

// Which series of the file: 0 for none.
int series_of(BodyKey body) {
    if (body.type == SSO_MOON && body.number == kMoonNumber) return kMoonAboutSunInFile;
    const bool planet =
        body.type == SSO_PLNT && body.number >= 1 && body.number <= kPlutoNumber;
    return planet ? body.number : 0;
}

}  // namespace

std::optional<FileBody> FileBody::of(const Bodies& bodies, const StateSource& source) {
    if (bodies.modern == nullptr || bodies.modern->file == nullptr ||
        source.object == nullptr || source.object->GetIntegrator() != nullptr)
        return std::nullopt;
    FileBody body;
    body.deflector_ = deflector_number(SSO_ID(source.body.type, source.body.number));
    if (source.body == kSunKey) return body;
    const int series = series_of(source.body);
    if (series != 0) body.series_ = DeSeries::open(series);
    if (!body.series_) return std::nullopt;
    return body;
}

void FileBody::states(std::span<const Instant> tdb, SeriesSums& out) const {
    if (series_) {
        series_->states(tdb, out);
    } else {
        out = {};
    }
}

void put_observer(const ObserverPlace& place, const Mat3& frame_from_j2000, std::size_t lane,
                  ObserverLanes& out) {
    put(place.heliocentric.r, lane, out.position);
    put(place.sun.v, lane, out.sun_velocity);
    put(place.velocity_c, lane, out.velocity);
    out.lorentz_reciprocal[lane] = place.lorentz_reciprocal;
    for (std::size_t k = 0; k < kDeflectorCount; ++k) {
        const DeflectingBody& body = place.bending.farthest_first[k];
        const BendingConstants constants =
            bending_constants(body.which, place.bending.on_earth);
        BendingLanes& lanes = out.bending[k];
        put(body.to_observer, lane, lanes.to_observer);
        put(body.velocity, lane, lanes.velocity);
        lanes.which[lane] = static_cast<double>(body.which);
        lanes.two_gm[lane] = constants.two_gm;
        lanes.limiter[lane] = constants.limiter;
        lanes.limb[lane] = constants.limb;
    }
    put(frame_from_j2000.r0, lane, out.frame_from_j2000[0]);
    put(frame_from_j2000.r1, lane, out.frame_from_j2000[1]);
    put(frame_from_j2000.r2, lane, out.frame_from_j2000[2]);
}

void find_emission(const FileBody& body, const ObserverLanes& observers,
                   std::span<const Instant> tdb, LightLanes& out) {
    static const auto corrections = of_processor(
        light_corrections_baseline, light_corrections_avx2, light_corrections_avx512);
    Instant emission[kPlaceLanes];
    bool settled = false;
    for (int step = 0; step < kMaxLightTimeSteps && !settled; ++step) {
        for (std::size_t i = 0; i < tdb.size(); ++i) emission[i] = earlier(tdb[i], out.tau[i]);
        body.states({emission, tdb.size()}, out.body);
        Lane step_by;
        corrections(observers, out, kLightDayPerAu, step_by);
        // A first guess of zero is none, even where it would do: for the Moon.
        settled = step > 0 || std::all_of(out.tau, out.tau + tdb.size(),
                                          [](double tau) { return tau > 0; });
        for (std::size_t i = 0; i < tdb.size(); ++i)
            settled = settled && !(std::fabs(step_by[i]) > kStraightLineOfLanes);
        if (settled) break;
        for (std::size_t i = 0; i < tdb.size(); ++i) out.tau[i] += step_by[i];
    }
    if (!settled) std::fill(std::begin(out.tau), std::end(out.tau), std::nan(""));
}

void see(const FileBody& body, const ObserverLanes& observers, const LightLanes& light,
         SeenLanes& out) {
    static const auto kernel = of_processor(see_baseline, see_avx2, see_avx512);
    kernel(observers, light, body.deflector(), kLightDayPerAu, out);
}

}  // namespace solsys
