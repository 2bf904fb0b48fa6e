#include "solsys/sky/minor_planet_survey.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <span>
#include <utility>

#include "core/constants.h"
#include "ephemeris/survey/orbit_blocks.h"
#include "events/search/keep_model.h"
#include "io/minor_planets.h"
#include "io/orbit_records.h"
#include "sky/text.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr float kNoMagnitude = 99;
constexpr double kLongestSurveySpan = 366;  // days
constexpr std::size_t kChunk = 256;         // blocks that stay in the nearest caches
// What separates the place on the orbit from that in which a body is seen, as an angle: the
// light's way, v/c at 0.1 au from the Sun; and as a length, the observer from the Earth's
// centre.
constexpr double kLightAngle = 5e-4;  // rad
constexpr double kParallaxAu = 5e-5;

struct Orbit {
    AsteroidRecord record;
    std::int32_t number;
    char name[36];
};

}  // namespace

struct MinorPlanetSurvey::Impl {
    OrbitBlocks blocks;
    std::vector<Orbit> orbits;
    std::vector<float> faintness;  // 10^(H/5); 0: H is not known
    struct Reach {
        float perihelion, aphelion;
    };
    std::vector<Reach> reach;

    bool add(const AsteroidRecord& record, std::int32_t number, std::string_view name) {
        const Elements& el = record.elements;
        const bool ellipse =
            el.e >= 0 && el.e < 1 && el.q > 0 &&
            std::isfinite(el.q + el.i + el.node + el.peri + el.M + el.n + el.epochFraction);
        if (!ellipse) return false;
        const double n = el.n != 0 ? el.n : std::sqrt(kSunGm / el.q) / el.q;
        blocks.add(
            {el.epochDay + el.epochFraction, el.q, el.e, el.i, el.node, el.peri, el.M, n});
        Orbit orbit{record, number, {}};
        name.copy(orbit.name, sizeof orbit.name - 1);
        orbits.push_back(orbit);
        const bool known = record.H < kNoMagnitude;
        faintness.push_back(known ? std::pow(10.0F, 0.2F * record.H) : 0.0F);
        reach.push_back(
            {static_cast<float>(el.q * (1 - el.e)), static_cast<float>(el.q * (1 + el.e))});
        return true;
    }

    [[nodiscard]] Body body(std::size_t k) const {
        const Orbit& orbit = orbits[k];
        Body body({SSO_ASTR, orbit.number}, orbit.name, orbit.record);
        body.elements_epoch =
            orbit.record.elements.epochDay + orbit.record.elements.epochFraction;
        return body;
    }

    // Calls look(orbit, place) for every orbit at an instant, heliocentric, J2000 equator;
    // places that are no numbers too.
    template <class Look>
    void each_place(double jd_tt, const Look& look) const {
        std::vector<OrbitPlaces> places(kChunk);
        const auto all = blocks.blocks();
        for (std::size_t first = 0; first < all.size(); first += kChunk) {
            const auto chunk = all.subspan(first, std::min(kChunk, all.size() - first));
            orbit_places(chunk, jd_tt, places.data());
            for (std::size_t k = 0; k < chunk.size() * kOrbitLanes; ++k) {
                const std::size_t orbit = first * kOrbitLanes + k;
                if (orbit >= orbits.size()) return;
                look(orbit, place_of(places[k / kOrbitLanes], k % kOrbitLanes));
            }
        }
    }
};

namespace {

Vec3 direction(double ra_deg, double dec_deg) {
    const double ra = ra_deg / kDegrees, dec = dec_deg / kDegrees;
    return {std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)};
}

Vec3 earth_at(CSWSolSys& model, const Instant& t) {
    const JulianDate tt = t.tt();
    model.SetTime(tt.day, tt.fraction, false);
    double r[3] = {};
    model.GetHelVec2K({SSO_PLNT, 3}, 0, r);
    return load(r);
}

// Whether a body seen along `line` (from the Earth's centre, on its orbit) can be within an
// angle of a direction, wherever up to `drift` it really is. Written so that what is no number
// may be anywhere.
class FieldTest {
  public:
    FieldTest(const SurveyField& field, double drift)
        : centre_(direction(field.ra_deg, field.dec_deg)),
          radius_(field.radius_deg / kDegrees + kLightAngle),
          cosine_(std::cos(std::min(radius_, kPi))),
          drift_(drift + kParallaxAu),
          limit_(std::pow(10.0, 0.2 * field.faintest)) {}

    [[nodiscard]] bool may_be_within(Vec3 line, double distance2) const {
        const double along = dot(line, centre_);
        // The drift changes both sides by its length at most.
        const double distance = std::sqrt(distance2);
        return !(distance > drift_ && along < cosine_ * distance - 2 * drift_);
    }
    // Whether r Delta is small enough for the magnitude at zero phase; 0: not known.
    [[nodiscard]] bool may_be_bright(float faintness, double r, double distance) const {
        return !(faintness > 0 && (r - drift_) * (distance - drift_) * faintness > limit_);
    }

  private:
    Vec3 centre_;
    double radius_, cosine_, drift_, limit_;
};

// The place of one body as the observer of a model sees it, on its orbit or integrated.
std::optional<SurveyFind> seen(CSWSolSys& model, Body body, const SurveyField& field,
                               bool two_body) {
    constexpr std::int32_t kAside = -2'000'000'001;  // of no body
    const auto& record = std::get<AsteroidRecord>(body.record);
    const SSO_ID id(two_body ? SSO_ASTR : SSO_FAST, kAside);
    if (two_body ? !model.AddAsteroid(kAside, record)
                 : !model.AddIntegratedAsteroid(kAside, record))
        return std::nullopt;
    double to[4] = {};
    float magnitude = kNoMagnitude;
    const bool known = model.GetAstrometricVec2K(id, to, 0);
    if (known && record.H < kNoMagnitude) model.GetMagnitude(id, &magnitude);
    two_body ? model.RemoveAsteroid(kAside) : model.RemoveIntegratedAsteroid(kAside);
    if (!known) return std::nullopt;
    const Vec3 line = load(to), centre = direction(field.ra_deg, field.dec_deg);
    SurveyFind find;
    find.body = std::move(body);
    find.distance_au = norm(line);
    find.ra_deg = std::atan2(line.y, line.x) * kDegrees;
    if (find.ra_deg < 0) find.ra_deg += 360;
    find.dec_deg = std::atan2(line.z, std::hypot(line.x, line.y)) * kDegrees;
    find.separation_deg = std::atan2(norm(cross(line, centre)), dot(line, centre)) * kDegrees;
    find.magnitude = magnitude;
    if (find.separation_deg > field.radius_deg || find.magnitude > field.faintest)
        return std::nullopt;
    return find;
}

bool go_on(const SurveyOptions& options, std::size_t done, std::size_t all) {
    if (options.control == nullptr) return true;
    options.control->tell(static_cast<double>(done) / static_cast<double>(all));
    return !options.control->stopped();
}

}  // namespace

MinorPlanetSurvey::MinorPlanetSurvey() : impl_(std::make_unique<Impl>()) {}
MinorPlanetSurvey::MinorPlanetSurvey(MinorPlanetSurvey&&) noexcept = default;
MinorPlanetSurvey& MinorPlanetSurvey::operator=(MinorPlanetSurvey&&) noexcept = default;
MinorPlanetSurvey::~MinorPlanetSurvey() = default;

Result<MinorPlanetSurvey> MinorPlanetSurvey::read(
    const std::string& path, const std::function<void(const std::string&)>& report) {
    const std::filesystem::path name(std::u8string(path.begin(), path.end()));
    std::error_code ignored;
    std::ifstream file;
    if (std::filesystem::is_regular_file(name, ignored)) file.open(name, std::ios::binary);
    if (!file.is_open()) return Failure{in_quotes(path) + " cannot be opened"};
    MinorPlanetSurvey survey;
    std::size_t problems = 0;
    std::string first;
    solsys_io::read_minor_planets(
        file,
        [&survey](const solsys_io::MinorPlanet& planet) {
            survey.impl_->add(to_record(planet), static_cast<std::int32_t>(planet.number),
                              planet.name);
        },
        [&](const solsys_io::Problem& problem) {
            if (++problems == 1)
                first = path + ":" + std::to_string(problem.line) + ": " +
                        std::string(problem.message);
        });
    if (report && problems > 0) {
        if (problems > 1)
            first += " (and " + std::to_string(problems - 1) + " more such lines)";
        report(first);
    }
    if (survey.size() == 0) return Failure{"no orbit in " + in_quotes(path)};
    return survey;
}

bool MinorPlanetSurvey::add(const Body& body) {
    const auto* record = std::get_if<AsteroidRecord>(&body.record);
    return record != nullptr && impl_->add(*record, body.id.number, body.name);
}

std::size_t MinorPlanetSurvey::size() const { return impl_->orbits.size(); }

std::vector<SurveyFind> MinorPlanetSurvey::in_field(Model& model, const SurveyField& field,
                                                    const SurveyOptions& options) const {
    if (!(field.radius_deg >= 0) || !std::isfinite(field.ra_deg + field.dec_deg)) return {};
    std::vector<std::size_t> candidates;
    {
        const search::KeepModel keep(model.classic());
        const Vec3 earth = earth_at(model.classic(), model.instant());
        const FieldTest test(field, options.drift_au);
        impl_->each_place(model.instant().jd_tt(), [&](std::size_t k, Vec3 r) {
            const Vec3 line = r - earth;
            const double distance2 = dot(line, line);
            if (test.may_be_within(line, distance2) &&
                test.may_be_bright(impl_->faintness[k], norm(r), std::sqrt(distance2)))
                candidates.push_back(k);
        });
    }
    std::vector<SurveyFind> out;
    for (std::size_t k = 0; k < candidates.size(); ++k) {
        if (!go_on(options, k, candidates.size())) break;
        if (auto find =
                seen(model.classic(), impl_->body(candidates[k]), field, options.two_body))
            out.push_back(std::move(*find));
    }
    std::stable_sort(out.begin(), out.end(), [](const SurveyFind& a, const SurveyFind& b) {
        return a.magnitude < b.magnitude;
    });
    return out;
}

namespace {

// The Earth day by day, and its place in between by the cubic through four days: to 1e-8 au.
class EarthPath {
  public:
    EarthPath(CSWSolSys& model, const Span& span) : days_(static_cast<int>(span.days()) + 2) {
        const search::KeepModel keep(model);
        for (int k = -1; k <= days_ + 1; ++k)
            places_.push_back(earth_at(model, span.from.plus_days(k)));
    }
    [[nodiscard]] int days() const { return days_; }
    [[nodiscard]] Vec3 at(double t) const {
        const int k = std::clamp(static_cast<int>(t), 0, days_ - 1);
        const double x = t - k;
        const Vec3* p = &places_[static_cast<std::size_t>(k)];
        return -x * (x - 1) * (x - 2) / 6 * p[0] + (x + 1) * (x - 1) * (x - 2) / 2 * p[1] -
               (x + 1) * x * (x - 2) / 2 * p[2] + (x + 1) * x * (x - 1) / 6 * p[3];
    }

  private:
    int days_;
    std::vector<Vec3> places_;
};

constexpr double kEarthSpeed = 0.0178;  // au/day, at its perihelion

// The least that a distance can be between two samples h apart, at a relative speed up to v.
// A sample that is no number says nothing.
bool may_be_nearer(double first, double second, double v, double h, double limit) {
    return !((first + second - v * h) / 2 > limit);
}

// Speed on the orbit, at most [au/day].
double fastest(float perihelion) {
    return std::sqrt(2 * kSunGm / std::max(0.001, static_cast<double>(perihelion)));
}

// Whether the orbit comes within the limit on a day, looked at every hour.
bool comes_near_by_the_hour(const OrbitBlock& block, std::size_t lane, const EarthPath& earth,
                            double jd_start, int day, double v, double limit) {
    constexpr double kHour = 1.0 / 24;
    double before = 0;
    const OrbitBlock hours = one_orbit_at(block, lane, kHour);
    for (int k = 0; k <= 24; ++k) {
        static_assert(kOrbitLanes == 8);
        static thread_local OrbitPlaces places;
        if (k % 8 == 0) orbit_places({&hours, 1}, jd_start + day + k * kHour, &places);
        const double distance =
            norm(place_of(places, static_cast<std::size_t>(k % 8)) - earth.at(day + k * kHour));
        if (k > 0 && may_be_nearer(before, distance, v, kHour, limit)) return true;
        before = distance;
    }
    return false;
}

// Whether an orbit of a block may come within the limit on one of the days, its places at the
// beginning of each being given.
bool comes_near(const OrbitBlock& block, std::span<const OrbitPlaces> places, std::size_t lane,
                const EarthPath& earth, double jd_start, double v, double limit) {
    double before = 0;
    for (int day = 0; day <= earth.days(); ++day) {
        const Vec3 r = place_of(places[static_cast<std::size_t>(day)], lane);
        const double distance = norm(r - earth.at(day));
        if (day > 0 && may_be_nearer(before, distance, v, 1, limit) &&
            comes_near_by_the_hour(block, lane, earth, jd_start, day - 1, v, limit))
            return true;
        before = distance;
    }
    return false;
}

// The approaches of the candidates, one after the other by the search for one body; by time.
template <class BodyOf>
std::vector<SurveyApproach> approaches_of(Model& model, std::span<const std::size_t> candidates,
                                          const BodyOf& body_of, const Span& asked,
                                          double within_au, const SurveyOptions& options) {
    std::vector<SurveyApproach> out;
    const ApproachOptions closely{within_au, options.two_body, {}};
    for (std::size_t k = 0; k < candidates.size(); ++k) {
        if (!go_on(options, k, candidates.size())) break;
        const Body body = body_of(candidates[k]);
        const auto found = find_approaches(model, body, asked, closely);
        if (!found) continue;
        for (const Approach& approach : *found)
            if (approach.planet.id == SSO_ID(SSO_PLNT, 3)) out.push_back({body, approach});
    }
    std::stable_sort(out.begin(), out.end(),
                     [](const SurveyApproach& a, const SurveyApproach& b) {
                         return a.approach.time < b.approach.time;
                     });
    return out;
}

}  // namespace

std::vector<SurveyApproach> MinorPlanetSurvey::near_earth(Model& model, const Span& span,
                                                          double within_au,
                                                          const SurveyOptions& options) const {
    if (!(span.days() > 0) || !(within_au > 0)) return {};
    const Span asked{span.from, span.from.plus_days(std::min(span.days(), kLongestSurveySpan))};
    const EarthPath earth(model.classic(), asked);
    const double limit = within_au + options.drift_au, jd_start = asked.from.jd_tt();
    constexpr double kNearest = 0.983, kFarthest = 1.017;  // the Earth from the Sun
    std::vector<std::size_t> candidates;
    const auto blocks = impl_->blocks.blocks();
    std::vector<OrbitPlaces> places(static_cast<std::size_t>(earth.days()) + 1);
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        const std::size_t first = b * kOrbitLanes;
        const std::size_t last = std::min(first + kOrbitLanes, impl_->orbits.size());
        const auto reaches = [&](std::size_t k) {
            return impl_->reach[k].perihelion <= kFarthest + limit &&
                   impl_->reach[k].aphelion >= kNearest - limit;
        };
        std::size_t some = first;
        while (some < last && !reaches(some)) ++some;
        if (some == last) continue;
        for (int day = 0; day <= earth.days(); ++day)
            orbit_places(blocks.subspan(b, 1), jd_start + day,
                         &places[static_cast<std::size_t>(day)]);
        for (std::size_t k = some; k < last; ++k) {
            const double v = fastest(impl_->reach[k].perihelion) + kEarthSpeed;
            if (reaches(k) &&
                comes_near(blocks[b], places, k - first, earth, jd_start, v, limit))
                candidates.push_back(k);
        }
    }
    const auto body_of = [this](std::size_t k) { return impl_->body(k); };
    return approaches_of(model, candidates, body_of, asked, within_au, options);
}

}  // namespace solsys::sky
