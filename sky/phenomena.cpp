#include "solsys/sky/phenomena.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "core/angles.h"
#include "sky/mutual_events.h"
#include "sky/planet_disk.h"
#include "sky/search_scope.h"

namespace solsys::sky {
namespace {

using PhenomenonKind = SatellitePhenomenon::Kind;

constexpr double kPhenomenonPrecision = 0.5 * search::kSecond;
// The pole of a planet precesses by less than 0.001 degree in this time [day].
constexpr double kSamePole = 400;
// Eccentricity and perturbations, over uniform motion in a circle.
constexpr double kPhenomenonMargin = 1.3;

enum class From { kEarth, kSun };

class Phenomena {
  public:
    Phenomena(SearchScope& scope, const Body& planet)
        : scope_(scope), planet_(planet), disk_(scope.sky.model(), planet.id) {}

    // The square of the distance from the axis, in radii, is that of a circular motion seen
    // from the side: its second derivative is bounded by 2 a^2 n^2.
    void add(const Body& moon, From from, std::vector<SatellitePhenomenon>& found) {
        const double n = kTwoPi / scope_.sky.model().GetOrbitalPeriod(moon.id);
        const double a = orbit_radius(moon.id);
        const double bound = kPhenomenonMargin * 2 * a * a * n * n;
        const auto clearance = [&](double t) { return sight(moon.id, from, t).clearance(); };
        search::Span walk = scope_.span();
        crossings(walk, scope_.control(), clearance, bound, std::sqrt(1.5 * a * a / bound),
                  [&](const search::Bracket& x) {
                      const double t = search::root(clearance, x, kPhenomenonPrecision).t;
                      if (scope_.within(t)) found.push_back(event(moon, from, t, x.a.f > 0));
                      return true;
                  });
    }

  private:
    Sight sight(const SSO_ID& moon, From from, double t) {
        if (std::fabs(t - disk_at_) > kSamePole) {
            disk_ = PlanetDisk(scope_.sky.model(), planet_.id);
            disk_at_ = t;
        }
        scope_.sky.at_in_same_frames(t);
        const diary::Apparent planet = scope_.sky.apparent({planet_.id});
        const diary::Apparent satellite = scope_.sky.apparent({moon});
        return from == From::kEarth ? from_earth(planet, satellite, disk_)
                                    : from_sun(scope_.sky, planet, satellite, disk_);
    }

    double orbit_radius(const SSO_ID& moon) {
        return norm(sight(moon, From::kEarth, scope_.span().start).satellite);
    }

    SatellitePhenomenon event(const Body& moon, From from, double t, bool begins) {
        const bool front = sight(moon.id, from, t).in_front();
        SatellitePhenomenon event;
        event.at = Instant::from_tt(t);
        event.moon = moon;
        event.begins = begins;
        if (front) {
            event.kind = from == From::kEarth ? PhenomenonKind::kTransit
                                              : PhenomenonKind::kShadowTransit;
            return event;
        }
        event.kind =
            from == From::kEarth ? PhenomenonKind::kOccultation : PhenomenonKind::kEclipse;
        const Sight other = sight(moon.id, from == From::kEarth ? From::kSun : From::kEarth, t);
        event.hidden = !other.in_front() && other.clearance() < 0;
        return event;
    }

    SearchScope& scope_;
    Body planet_;
    PlanetDisk disk_;
    double disk_at_ = 0;
};

std::vector<Body> great_moons(int planet) {
    std::vector<Body> moons;
    const auto add = [&moons](std::initializer_list<int> numbers) {
        for (const int number : numbers) moons.emplace_back(SSO_ID(SSO_MOON, number));
    };
    if (planet == 5) add({501, 502, 503, 504});
    if (planet == 6) add({603, 604, 605, 606});
    return moons;
}

}  // namespace

const char* to_string(PhenomenonKind kind) {
    switch (kind) {
        case PhenomenonKind::kTransit:
            return "transit";
        case PhenomenonKind::kShadowTransit:
            return "shadow transit";
        case PhenomenonKind::kOccultation:
            return "occultation";
        case PhenomenonKind::kEclipse:
            return "eclipse";
        case PhenomenonKind::kMutualOccultation:
            return "mutual occultation";
        case PhenomenonKind::kMutualEclipse:
            return "mutual eclipse";
    }
    return "";
}

std::vector<SatellitePhenomenon> satellite_phenomena(Model& model, const Body& planet,
                                                     const Span& span, bool mutual,
                                                     SearchControl* control) {
    std::vector<SatellitePhenomenon> found;
    if (planet.id.type != SSO_PLNT) return found;
    SearchScope scope(model, span, control);
    const std::vector<Body> moons = great_moons(planet.id.number);
    Phenomena phenomena(scope, planet);
    for (const Body& moon : moons) {
        phenomena.add(moon, From::kEarth, found);
        phenomena.add(moon, From::kSun, found);
    }
    if (mutual) add_mutual_events(scope, moons, found);
    std::stable_sort(
        found.begin(), found.end(),
        [](const SatellitePhenomenon& a, const SatellitePhenomenon& b) { return a.at < b.at; });
    return found;
}

}  // namespace solsys::sky
