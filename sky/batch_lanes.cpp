#include "sky/batch_lanes.h"

#include <algorithm>
#include <cmath>

#include "core/spherical.h"
#include "sky/place_of.h"
#include "sky/units.h"
#include "solsys/light_time.h"
#include "solsys/model.h"
#include "solsys/reduction.h"

namespace solsys::sky {
namespace {

constexpr double kLightTimeReach =
    1;  // day: a light time expected from that far costs no digits

Vec3 of_lane(const LaneVector& v, std::size_t lane) {
    return {v[0][lane], v[1][lane], v[2][lane]};
}

Place place_towards(Vec3 direction, double distance) {
    const Spherical s = to_spherical(direction, distance);
    return place_of(s.r, s.lon, s.lat);
}

// Azimuth from north through east; the frame's longitudes run through west.
Horizontal horizontal_of(Vec3 direction) {
    const Spherical s = to_spherical(direction, norm(direction));
    const double azimuth = kTwoPi - s.lon;
    return {(azimuth == kTwoPi ? 0 : azimuth) * kDegrees, s.lat * kDegrees};
}

}  // namespace

ExpectedLightTime::ExpectedLightTime(std::span<const Instant> instants,
                                     std::span<const Place> row, std::size_t first) {
    if (first < 2) return;
    from_ = instants[first - 1];
    last_ = row[first - 1].light_time_days;
    slope_ =
        (last_ - row[first - 2].light_time_days) / days_between(instants[first - 2], from_);
}

double ExpectedLightTime::at(const Instant& t, double reach) const {
    const double days = days_between(from_, t), expected = last_ + slope_ * days;
    return std::fabs(days) <= reach && expected > 0 && expected < kFarthestLightTime ? expected
                                                                                     : 0;
}

std::vector<std::optional<FileBody>> bodies_in_file(Model& model,
                                                    std::span<const Body> bodies) {
    const CSWSolSys::Model& m = model.classic().Inside();
    std::vector<std::optional<FileBody>> found;
    found.reserve(bodies.size());
    for (const Body& body : bodies) {
        const bool here = body_key(body.id) == m.current.observer.body();
        found.push_back(here || body.is_star()
                            ? std::nullopt
                            : FileBody::of(m.bodies, find_source(m.bodies, body.id)));
    }
    return found;
}

void copy_states(const SeriesSums& sums, std::span<StateVector> out) {
    for (std::size_t i = 0; i < out.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k) {
            out[i][k] = sums.value[k][i];
            out[i][k + 3] = sums.rate[k][i];
        }
}

void PlaceGroup::add(const Model& model, std::size_t index) {
    const CSWSolSys::Model& m = model.classic().Inside();
    index_[count_] = index;
    tdb_[count_] = m.reduction->dynamical(m.current.now);
    frames_[count_] = m.current.frames;
    observer_[count_] = m.current.observer;
    put_observer(m.current.observer.place, m.current.frames.cur_from_j2000, count_, lanes_);
    ++count_;
}

void PlaceGroup::places(const FileBody& body, PlaceKind kind, std::span<const Instant> instants,
                        std::span<Place> row) const {
    LightLanes light{};
    const ExpectedLightTime expected(instants, row, index_[0]);
    for (std::size_t k = 0; k < count_; ++k)
        light.tau[k] = expected.at(instants[index_[k]], kLightTimeReach);
    solsys::find_emission(body, lanes_, {tdb_, count_}, light);
    SeenLanes seen;
    see(body, lanes_, light, seen);
    const LaneVector& way = kind == PlaceKind::kApparent ? seen.direction : seen.path;
    for (std::size_t k = 0; k < count_; ++k)
        row[index_[k]] = place_towards(of_lane(way, k), seen.distance[k]);
}

void PlaceGroup::find_emission(const FileBody& body, LightLanes& out) const {
    out = {};
    solsys::find_emission(body, lanes_, {tdb_, count_}, out);
}

void PlaceGroup::stand_on(const Model& model, const OBSERVER& site, ObserverLanes& out) const {
    const Bodies& bodies = model.classic().Inside().bodies;
    for (std::size_t k = 0; k < count_; ++k) {
        const ObserverState o = on_surface(bodies, frames_[k], observer_[k], site);
        const Mat3 horizon_from_cur =
            transpose(o.frames.cur_from_body * o.frames.body_from_horizon);
        put_observer(o.place, horizon_from_cur * frames_[k].cur_from_j2000, k, out);
    }
}

void PlaceGroup::horizontals(const FileBody& body, const ObserverLanes& observers,
                             const LightLanes& light, std::span<Horizontal> row) const {
    SeenLanes seen;
    see(body, observers, light, seen);
    for (std::size_t k = 0; k < count_; ++k)
        row[index_[k]] = horizontal_of(of_lane(seen.direction, k));
}

}  // namespace solsys::sky
