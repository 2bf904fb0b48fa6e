#include "sky/mutual_events.h"

#include <cmath>

#include "core/angles.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

using MutualKind = SatellitePhenomenon::Kind;

constexpr double kMutualPrecision = 0.5 * search::kSecond;
constexpr double kMutualMargin = 1.3;
constexpr double kSunRadius = kSunRadiusKm / kAuKm;

// The geometry of a satellite (far) on the line from the Earth or the Sun through another one.
struct Line {
    double distance_squared;  // of the far one's centre from the line [au^2]
    double behind;            // how far beyond the near one [au]
    double from_origin;       // of the near one [au]
};

class MutualEvents {
  public:
    MutualEvents(SearchScope& scope, const Body& near, const Body& far)
        : scope_(scope), near_(near), far_(far) {
        CSWSolSys& model = scope.sky.model();
        near_radius_ = model.GetRadiEq(near.id) / kAuKm;
        far_radius_ = model.GetRadiEq(far.id) / kAuKm;
        bound_ = motion_bound(model);
    }

    void add(MutualKind kind, std::vector<SatellitePhenomenon>& found) {
        const bool sun = kind == MutualKind::kMutualEclipse;
        const auto clearance = [this, sun](double t) {
            const Line line = line_at(t, sun);
            double reach = near_radius_ + far_radius_;
            if (sun) reach += std::fabs(line.behind) * kSunRadius / line.from_origin;
            return line.distance_squared - reach * reach;
        };
        search::Span walk = scope_.span();
        crossings(walk, scope_.control(), clearance, bound_,
                  std::sqrt(3 * orbits_ * orbits_ / 4 / bound_), [&](const search::Bracket& x) {
                      const double t = search::root(clearance, x, kMutualPrecision).t;
                      if (!scope_.within(t) || line_at(t, sun).behind < 0) return true;
                      SatellitePhenomenon event;
                      event.at = Instant::from_tt(t);
                      event.kind = kind;
                      event.begins = x.a.f > 0;
                      event.moon = far_;
                      event.other = near_;
                      found.push_back(event);
                      return true;
                  });
    }

  private:
    // Of the square of a distance between two bodies in circular orbits:
    // 2 (v1 + v2)^2 + 2 (a1 + a2) (g1 + g2), v speeds and g accelerations.
    double motion_bound(CSWSolSys& model) {
        double speed = 0, acceleration = 0;
        for (const Body* moon : {&near_, &far_}) {
            double r[3] = {};
            model.GetVecCentre2K(moon->id, 0, r);
            const double a = norm(load(r));
            const double n = kTwoPi / model.GetOrbitalPeriod(moon->id);
            orbits_ += a;
            speed += a * n;
            acceleration += a * n * n;
        }
        return kMutualMargin * 2 * (speed * speed + orbits_ * acceleration);
    }

    Line line_at(double t, bool sun) {
        scope_.sky.at_in_same_frames(t);
        const diary::Apparent a = scope_.sky.apparent({near_.id});
        const diary::Apparent b = scope_.sky.apparent({far_.id});
        const Vec3 origin = sun ? -scope_.sky.earth().r : Vec3{};
        Vec3 near = a.path - origin;
        const Vec3 far = b.path - origin;
        if (sun) {
            // The light that falls on the far one passed the near one that much earlier.
            const double passage = kLightDaysPerAu * (norm(far) - norm(near));
            near -= (kLightDaysPerAu * (b.distance - a.distance) + passage) * a.velocity;
        }
        const Vec3 u = unit(near);
        const Vec3 apart = far - near;
        const double behind = dot(apart, u);
        return {dot(apart, apart) - behind * behind, behind, norm(near)};
    }

    SearchScope& scope_;
    Body near_, far_;
    double near_radius_ = 0, far_radius_ = 0;  // au
    double orbits_ = 0;                        // au: sum of the orbits' radii
    double bound_ = 1;
};

}  // namespace

void add_mutual_events(SearchScope& scope, const std::vector<Body>& moons,
                       std::vector<SatellitePhenomenon>& found) {
    for (const Body& near : moons) {
        for (const Body& far : moons) {
            if (near.id == far.id) continue;
            MutualEvents events(scope, near, far);
            events.add(MutualKind::kMutualOccultation, found);
            events.add(MutualKind::kMutualEclipse, found);
        }
    }
}

}  // namespace solsys::sky
