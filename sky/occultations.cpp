#include "solsys/sky/occultations.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/angles.h"
#include "events/diary/quantities.h"
#include "sky/search_scope.h"
#include "sky/stars.h"
#include "sky/units.h"
#include "solsys/earth_orientation.h"
#include "solsys/magnitudes.h"
#include "solsys/toolkit.h"

namespace solsys::sky {
namespace {

using Contact = LunarOccultation::Contact;
using diary::Apparent;
using diary::Target;

constexpr double kMoonRadius = 1737.4 / kAuKm;  // mean limb
constexpr double kContactPrecision = 0.05 * search::kSecond;
constexpr double kWindow = 0.25;  // day: candidates are chosen anew
// The Moon's centre stays this near to its place in the middle of a window (0.30 rad/day), and
// a site sees it displaced by at most its parallax; the widest Moon, and rounding up.
constexpr double kOccultationReach = 0.30 * kWindow / 2 + 0.0180 + 0.0050 + 0.002;  // rad
// Of half the square of the topocentric angle: the Moon's rate (0.30 rad/day) and the site's
// (parallax times the Earth's turn, 0.113) squared; accelerations times the angle within reach.
constexpr double kBound = 0.42 * 0.42 + 0.06 * 0.75;
constexpr double kAmplitude = 5e-5;
constexpr double kGraze = 10 / kArcseconds;  // rad
constexpr double kHalfMinute = 0.5 / 1440;

struct Candidate {
    Body body;
    Target target;
    double magnitude = 99;
    double radius_au = 0;  // 0: a star
    Vec3 direction{};      // J2000, of a star
};

class Occultations {
  public:
    Occultations(SearchScope& scope, const Site& site, const OccultationOptions& options)
        : scope_(scope), sky_(scope.sky), options_(options) {
        const OBSERVER observer = site.observer();
        longitude_ = observer.location[1];
        latitude_ = observer.location[2];
        double flattening = 0;
        const double radius = sky_.model().GetRadiEq({SSO_PLNT, 3}, &flattening);
        const double place[3] = {site.height_m / 1000, 0, latitude_};
        Plg2Plc(radius, flattening, place, from_centre_);
        choose_bodies();
    }

    std::vector<LunarOccultation> find() {
        search::Span walk = scope_.span();
        while (!walk.over() && scope_.control().go_on(walk)) {
            const double end = std::min(walk.cursor + kWindow, walk.end);
            sky_.at((walk.cursor + end) / 2);
            const Vec3 moon = sky_.apparent({diary::kMoon}).direction;
            if (std::isfinite(moon.x)) {
                for (const Candidate& c : candidates_) {
                    const Vec3 there =
                        c.radius_au > 0 ? sky_.apparent(c.target).direction : c.direction;
                    if (dot(moon, there) > std::cos(kOccultationReach))
                        look_at(c, walk.cursor, end);
                }
            }
            walk.cursor = end;
        }
        std::stable_sort(found_.begin(), found_.end(),
                         [](const auto& a, const auto& b) { return a.at < b.at; });
        return std::move(found_);
    }

  private:
    struct View {
        Vec3 moon{}, body{};
        double moon_radius = 0, body_radius = 0;  // rad
        double distance_au = 0;
    };

    void choose_bodies() {
        // The belt that the Moon can cover, within the inclination of its orbit and parallax.
        for (const StarRow& row : bright_stars()) {
            const double latitude = ecliptic_latitude(row);
            if (row.magnitude > options_.faintest_star || std::fabs(latitude) > 0.125) continue;
            Candidate star{body_of(row),
                           {},
                           row.magnitude,
                           0,
                           direction(row.ra_deg / kDegrees, row.dec_deg / kDegrees)};
            candidates_.push_back(star);
        }
        if (options_.planets) {
            for (const int number : {1, 2, 4, 5, 6, 7, 8, 9}) {
                const SSO_ID id(SSO_PLNT, number);
                candidates_.push_back(
                    {Body(id), {id}, 99, sky_.model().GetRadiEq(id) / kAuKm, {}});
            }
        }
        for (Candidate& c : candidates_) c.target = target_of(c.body);
    }

    static double ecliptic_latitude(const StarRow& row) {
        constexpr double obliquity = 0.40909280422;  // J2000.0
        const Vec3 v = direction(row.ra_deg / kDegrees, row.dec_deg / kDegrees);
        return std::asin(v.z * std::cos(obliquity) - v.y * std::sin(obliquity));
    }

    // Of the instant that the model stands at, by the turn of the Earth in force.
    [[nodiscard]] double local_sidereal() const {
        return sky_.model().GetSiderealTime(false) + sky_.equation_of_equinoxes() + longitude_;
    }

    // The site from the Earth's centre, J2000 equator [au]; the frames have to be up to date.
    [[nodiscard]] Vec3 site_now() const {
        const double sidereal = local_sidereal();
        const Vec3 of_date = rotate_z(-sidereal) * Vec3{from_centre_[0], 0, from_centre_[2]};
        return (1 / kAuKm) * transpose_times(sky_.equator(), of_date);
    }

    View view(const Candidate& c, double t) {
        sky_.at(t);
        const Vec3 site = site_now();
        const Apparent moon = sky_.seen_from(sky_.apparent({diary::kMoon}), site);
        const Apparent body = sky_.seen_from(sky_.apparent(c.target), site);
        return {moon.direction, body.direction, std::asin(kMoonRadius / moon.distance),
                c.radius_au > 0 ? std::asin(c.radius_au / body.distance) : 0, moon.distance};
    }

    // Half the square of the angle less that at the contact: to 1e-5 of itself here.
    double clearance(const Candidate& c, double edge, double t) {
        const View v = view(c, t);
        return std::cos(v.moon_radius + edge * v.body_radius) - dot(v.moon, v.body);
    }

    void look_at(const Candidate& c, double from, double to) {
        for (const double edge : {1.0, -1.0}) {
            const auto f = [&](double t) { return clearance(c, edge, t); };
            search::Span walk{from, to, from};
            crossings(walk, scope_.control(), f, kBound, std::sqrt(3 * kAmplitude / kBound),
                      [&](const search::Bracket& x) {
                          const double t = search::root(f, x, kContactPrecision).t;
                          if (scope_.within(t)) add(c, contact_of(edge > 0, x.a.f > 0), t);
                          return true;
                      });
            if (c.radius_au == 0) break;
        }
    }

    // A star's contacts are those that a planet's inner ones are named for.
    Contact contact_of(bool outer, bool begins) const {
        if (outer) return begins ? Contact::kBeginsToDisappear : Contact::kHasReappeared;
        return begins ? Contact::kDisappears : Contact::kReappears;
    }

    void add(const Candidate& c, Contact contact, double t) {
        LunarOccultation event;
        event.at = Instant::from_tt(t);
        event.body = c.body;
        event.contact = contact;
        if (c.radius_au == 0) {
            event.contact = contact == Contact::kBeginsToDisappear ? Contact::kDisappears
                                                                   : Contact::kReappears;
        }
        const View v = view(c, t);
        const Vec3 sun_path = sky_.seen_from(sky_.sun(), site_now()).direction;
        altitudes(event, v, sun_path);
        event.magnitude = magnitude_of(c, t);
        if (options_.observable_only && !observable(event, c)) return;
        limb(event, v, sun_path);
        event.graze = depth(c, v, t) < kGraze;
        found_.push_back(event);
    }

    void altitudes(LunarOccultation& event, const View& v, Vec3 sun) const {
        const double sidereal = local_sidereal();
        // The local meridian's axes: south, east, zenith.
        const Mat3 horizon = rotate_y(kHalfPi - latitude_) * rotate_z(sidereal);
        const Vec3 moon = horizon * (sky_.equator() * v.moon);
        event.moon_altitude_deg = latitude_of(moon) * kDegrees;
        event.moon_azimuth_deg = longitude_of(-moon.x, moon.y) * kDegrees;
        event.sun_altitude_deg = latitude_of(horizon * (sky_.equator() * sun)) * kDegrees;
    }

    bool observable(const LunarOccultation& event, const Candidate& c) const {
        const bool bright = c.radius_au > 0 || c.magnitude < 1.5;
        return event.moon_altitude_deg > 0 && event.sun_altitude_deg < (bright ? 0 : -6);
    }

    void limb(LunarOccultation& event, const View& v, Vec3 sun) const {
        const Mat3& equator = sky_.equator();
        const double contact = position_angle(equator * v.moon, equator * v.body);
        const double bright = position_angle(equator * v.moon, equator * sun);
        event.position_angle_deg = contact * kDegrees;
        // The Sun is so far that the angle at the Moon is 180 degrees less the elongation.
        event.moon_illuminated = calcVisibleDiskPart(kPi - separation(v.moon, sun));
        const double from_bright = wrap_half_turn(contact - bright);
        event.dark_limb = std::fabs(from_bright) > kHalfPi;
        event.cusp_angle_deg = (std::fabs(from_bright) - kHalfPi) * kDegrees;
        const double cusp = bright + (from_bright > 0 ? kHalfPi : -kHalfPi);
        event.north_cusp = std::cos(cusp) > 0;
    }

    // How deep the chord through the Moon's disk lies under the limb, by the direction in which
    // the body moves there.
    double depth(const Candidate& c, const View& v, double t) {
        const auto offset = [&](double at) {
            const View w = view(c, at);
            return w.body - w.moon;
        };
        const Vec3 motion = unit(offset(t + kHalfMinute) - offset(t - kHalfMinute));
        const Vec3 outwards = unit(v.body - v.moon);
        return v.moon_radius * (1 - norm(cross(outwards, motion)));
    }

    double magnitude_of(const Candidate& c, double t) const {
        if (c.radius_au == 0) return c.magnitude;
        const solsys::Instant instant = search::split(t);
        sky_.model().UpdateSys(instant.day, instant.fraction);
        float magnitude = 0;
        return sky_.model().GetMagnitude(c.body.id, &magnitude) ? static_cast<double>(magnitude)
                                                                : 99;
    }

    SearchScope& scope_;
    diary::GeocentricSky& sky_;
    OccultationOptions options_;
    double longitude_ = 0, latitude_ = 0;
    double from_centre_[3] = {};  // km, in its own meridian
    std::vector<Candidate> candidates_;
    std::vector<LunarOccultation> found_;
};

}  // namespace

const char* to_string(Contact contact) {
    switch (contact) {
        case Contact::kDisappears:
            return "disappears";
        case Contact::kReappears:
            return "reappears";
        case Contact::kBeginsToDisappear:
            return "begins to disappear";
        case Contact::kHasReappeared:
            return "has reappeared";
    }
    return "";
}

std::vector<LunarOccultation> lunar_occultations(Model& model, const Span& span,
                                                 const OccultationOptions& options,
                                                 SearchControl* control) {
    if (!model.site()) return {};
    const Site site = *model.site();
    SearchScope scope(model, span, control);
    return Occultations(scope, site, options).find();
}

}  // namespace solsys::sky
