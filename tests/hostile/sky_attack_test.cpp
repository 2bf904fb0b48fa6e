// Every function of the typed layer, with hostile bodies, sites, times, texts and numbers, on
// either source of places.
#include <gtest/gtest.h>

#include "solsys/sky/sky.h"
#include "tests/hostile/attack.h"

namespace {

using namespace solsys::sky;
using hostile::Attacker;

template <class T>
constexpr bool kIsSpan = false;
template <class T>
constexpr bool kIsSpan<std::span<T>> = true;
template <class T>
constexpr bool kIsVector = false;
template <class T>
constexpr bool kIsVector<std::vector<T>> = true;

std::string text_of(Attacker& a) {
    static const std::string pool[] = {"",
                                       " ",
                                       "-",
                                       "jupiter",
                                       "io",
                                       "M31",
                                       "433",
                                       "halley",
                                       "plnt:99999999999",
                                       "hip:-1",
                                       "moon:501",
                                       "astr:",
                                       "all",
                                       "planets",
                                       "Oslo",
                                       "Springfield, IL, US",
                                       ",,,",
                                       "51.5,-0.1",
                                       "1e999,nan",
                                       "91,0",
                                       "51:30:00,-0:07:00,1e400",
                                       "now",
                                       "now+99999999999999d",
                                       "jd:nan",
                                       "jd:1e300",
                                       "2026-13-45T99:99",
                                       "2026-12-01T20",
                                       "mjd:-1e18",
                                       "+02:00",
                                       "Europe/Oslo",
                                       "-99:99",
                                       "1mo",
                                       "-5d",
                                       "1e400d",
                                       "q=1,e=nan",
                                       "a=2.2,e=0.1,i=3,node=4,peri=5,M=6",
                                       "/dev/zero",
                                       "/dev/null",
                                       "/nonexistent",
                                       "\xff\xfe\x80",
                                       "\xc3",
                                       "full-moon",
                                       "Boo",
                                       std::string(5000, '9'),
                                       std::string(5000, 'a'),
                                       std::string(3, '\0')};
    std::string text = pool[a.pick(std::size(pool))];
    if (!text.empty() && a.pick(4) == 0)
        text[a.pick(text.size())] = static_cast<char>(a.pick(256));
    return text;
}

Instant instant_of(Attacker& a) {
    return a.pick(2) == 0 ? Instant::from_utc(2458849.5 + static_cast<double>(a.pick(900)))
                          : Instant::from_tt(JulianDate{a.integer(), a.number()});
}

template <class T>
T draw(Attacker& a);

// Short spans anywhere; long ones only where nothing can be computed.
Span span_of(Attacker& a) {
    const Instant from = instant_of(a);
    static const double days[] = {3, 0.5, 0, -1e6, 20};
    if (std::fabs(from.jd_utc()) > 8e6 && a.pick(2) == 0)
        return {from, from.plus_days(from.jd_utc() > 0 ? 1e8 : 1e6)};
    return {from, from.plus_days(days[a.pick(std::size(days))])};
}

Body body_of(Attacker& a) {
    switch (a.pick(5)) {
        case 0:
            return Body(a.id(), text_of(a));
        case 1: {
            AsteroidRecord record;
            record.elements = {a.number(), a.number(), a.number(), a.number(), a.number(),
                               a.number(), a.number(), a.number(), a.integer()};
            Body body(SSO_ID(SSO_ASTR, a.integer()), "rock", record);
            body.elements_epoch = a.number();
            return body;
        }
        case 2: {
            StarObject star;
            star.ra = a.number(), star.dec = a.number();
            star.parallax = static_cast<float>(a.number());
            star.magnitude = static_cast<float>(a.number());
            return Body(SSO_ID(SSO_STAR, a.integer()), "star", star);
        }
        case 3:
            return Body(SSO_ID(SSO_PLNT, static_cast<int>(a.pick(16))));
        default:
            return find_body("ceres").value_or(sun());
    }
}

// Good ones, and any numbers for elements.
Satellite satellite_of(Attacker& a) {
    static const Satellite good =
        parse_satellites(
            "ISS\n1 25544U 98067A   23055.54791667  .00016717  00000-0  10270-3 0  9007\n"
            "2 25544  51.6400 208.9163 0006317  69.9862  25.2906 15.50000000 00009\n")
            .satellites.at(0);
    Satellite satellite = good;
    if (a.pick(2) == 0) a.fill(satellite.elements);
    if (a.pick(2) == 0) satellite.standard_magnitude = a.number();
    return satellite;
}

Site site_of(Attacker& a) {
    if (a.pick(2) == 0) return *find_city("Oslo");
    return {text_of(a), a.number(), a.number(), a.number(), a.number(), text_of(a), text_of(a)};
}

template <class T>
T draw(Attacker& a) {
    if constexpr (std::is_same_v<T, std::string>) {
        return text_of(a);
    } else if constexpr (kIsVector<T>) {
        T all;
        for (std::size_t n = a.pick(4); n > 0; --n)
            all.push_back(draw<typename T::value_type>(a));
        return all;
    } else if constexpr (std::is_pointer_v<T>) {
        return nullptr;
    } else if constexpr (std::is_same_v<T, bool>) {
        return a.pick(2) == 0;
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(a.pick(2));
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(a.number());
    } else if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(a.integer());
    } else if constexpr (std::is_same_v<T, Instant>) {
        return instant_of(a);
    } else if constexpr (std::is_same_v<T, Span>) {
        return span_of(a);
    } else if constexpr (std::is_same_v<T, Body>) {
        return body_of(a);
    } else if constexpr (std::is_same_v<T, Site>) {
        return site_of(a);
    } else if constexpr (std::is_same_v<T, Zone>) {
        return Zone::find(text_of(a)).value_or(Zone());
    } else if constexpr (std::is_same_v<T, CivilDate>) {
        return {a.integer(), a.integer(), a.integer()};
    } else if constexpr (std::is_same_v<T, CivilTime>) {
        return {draw<CivilDate>(a), a.integer(), a.integer(), a.number()};
    } else if constexpr (std::is_same_v<T, Step>) {
        return {a.number(), a.integer()};
    } else if constexpr (std::is_same_v<T, Place>) {
        return {a.number(), a.number(), a.number(), a.number()};
    } else if constexpr (std::is_same_v<T, Satellite>) {
        return satellite_of(a);
    } else if constexpr (std::is_same_v<T, PassLimits>) {
        return a.pick(2) == 0 ? T{} : T{a.number(), a.number()};
    } else if constexpr (std::is_same_v<T, NightHours>) {
        T night;
        night.span = span_of(a), night.dark = {span_of(a), span_of(a)};
        return night;
    } else if constexpr (std::is_same_v<T, Altitude>) {
        return {a.number(), a.pick(2) == 0};
    } else if constexpr (std::is_same_v<T, Air>) {
        return {a.number(), a.number(), a.number(), a.number()};
    } else if constexpr (std::is_same_v<T, std::optional<Atmosphere>>) {
        return a.pick(2) == 0 ? T() : T({draw<Air>(a), a.number(), a.number()});
    } else {
        return T{};
    }
}

// What a parameter is drawn as: views need something to look at.
template <class P>
struct KeptFor {
    using type = P;
};
template <>
struct KeptFor<std::string_view> {
    using type = std::string;
};
template <class T>
struct KeptFor<std::span<T>> {
    using type = std::vector<std::remove_const_t<T>>;
};
template <class P>
using Kept = typename KeptFor<std::remove_cvref_t<P>>::type;

class Over {
  public:
    Over(Attacker& attack, Model& model) : attack_(attack), model_(model) {}
    template <class R, class M, class... Args>
    requires std::is_same_v<std::remove_const_t<M>, Model>
    void operator()(const char* name, R (*function)(M&, Args...)) {
        std::tuple<Kept<Args>...> held{draw<Kept<Args>>(attack_)...};
        attack_(name,
                [&] { std::apply([&](auto&... a) { (void)function(model_, a...); }, held); });
    }
    template <class R, class... Args>
    void operator()(const char* name, R (*function)(Args...)) {
        std::tuple<Kept<Args>...> held{draw<Kept<Args>>(attack_)...};
        attack_(name, [&] { std::apply([&](auto&... a) { (void)function(a...); }, held); });
    }

  private:
    Attacker& attack_;
    Model& model_;
};

#define FUNCTION(name) over(#name, &name)

void attack_places(Over& over) {
    FUNCTION(apparent_place), FUNCTION(astrometric_place), FUNCTION(heliocentric_state);
    FUNCTION(horizontal_of), FUNCTION(ecliptic_of), FUNCTION(galactic_of), FUNCTION(of_date);
    FUNCTION(appearance_of), FUNCTION(magnitude_of), FUNCTION(constellation_at),
        FUNCTION(constellation_called), FUNCTION(constellation_number);
    FUNCTION(facts_of), FUNCTION(view_planet), FUNCTION(view_satellite), FUNCTION(moons_of);
    FUNCTION(sky_chart);
    FUNCTION(file_states), FUNCTION(heliocentric_states), FUNCTION(apparent_places);
    FUNCTION(astrometric_places), FUNCTION(horizontals), FUNCTION(magnitudes);
    FUNCTION(constellations), FUNCTION(separations);
    FUNCTION(standard_air), FUNCTION(checked_air), FUNCTION(refraction_of_apparent_short);
    FUNCTION(refraction_of_true_short), FUNCTION(refraction_of_apparent);
    FUNCTION(refraction_of_true), FUNCTION(dip_of_horizon), FUNCTION(true_altitude_of_horizon);
    FUNCTION(apparent_altitude), FUNCTION(true_altitude);
    FUNCTION(read_earth_orientation), FUNCTION(set_earth_orientation), FUNCTION(summary_of);
    FUNCTION(set_earth_rotation), FUNCTION(set_leap_seconds);
}

void attack_names(Over& over) {
    FUNCTION(find_body), FUNCTION(find_bodies), FUNCTION(find_small_body), FUNCTION(name_of);
    FUNCTION(code_of), FUNCTION(sun), FUNCTION(moon), FUNCTION(find_in_file);
    FUNCTION(parse_elements), FUNCTION(elements_uncertainty_arcsec), FUNCTION(parse_satellites),
        FUNCTION(parse_site), FUNCTION(find_city), FUNCTION(cities_called);
    FUNCTION(coordinate_text), FUNCTION(earth_centre), FUNCTION(parse_time),
        FUNCTION(parse_step);
    FUNCTION(after_steps), FUNCTION(julian_day_number), FUNCTION(date_of_julian_day);
    FUNCTION(days_between), FUNCTION(name_of_kind), FUNCTION(find_kind), FUNCTION(suggestion);
    FUNCTION(small_bodies), FUNCTION(read_satellites), FUNCTION(find_satellite);
    over("to_string", static_cast<std::string (*)(const CivilDate&)>(&to_string));
    over("to_string", static_cast<const char* (*)(EclipseKind)>(&to_string));
    over("to_string", static_cast<const char* (*)(Phase)>(&to_string));
}

void attack_searches(Over& over) {
    using OnHorizon = Risings (*)(Model&, const Site&, const Body&, const Span&);
    using OverAltitude =
        Risings (*)(Model&, const Site&, const Body&, const Span&, const Altitude&);
    using Watched = Risings (*)(Model&, const Site&, const Body&, const Span&, const Altitude&,
                                SearchControl*);
    over("risings", static_cast<OnHorizon>(&risings));
    over("risings", static_cast<OverAltitude>(&risings));
    over("risings", static_cast<Watched>(&risings));
    using Through = std::vector<Passage> (*)(Model&, const Site&, const Body&,
                                             std::span<const Altitude>, const Span&);
    using WatchedThrough =
        std::vector<Passage> (*)(Model&, const Site&, const Body&, std::span<const Altitude>,
                                 const Span&, SearchControl*);
    over("passages", static_cast<Through>(&passages));
    over("passages", static_cast<WatchedThrough>(&passages));
    over("horizon_of", static_cast<Altitude (*)(const Site&, const Body&)>(&horizon_of));
    FUNCTION(times_above), FUNCTION(moon_phase);
    FUNCTION(principal_phases), FUNCTION(conjunctions), FUNCTION(gatherings), FUNCTION(diary);
    FUNCTION(satellite_phenomena), FUNCTION(lunar_occultations), FUNCTION(elongation_curves);
    FUNCTION(find_eclipses), FUNCTION(eclipse_at);
    FUNCTION(eclipse_map), FUNCTION(moon_in_shadow), FUNCTION(eclipsed_sun);
    FUNCTION(night_around), FUNCTION(best_view), FUNCTION(passes), FUNCTION(satellite_place);
    FUNCTION(path_of), FUNCTION(integrate), FUNCTION(is_integrated);
}
#undef FUNCTION

void attack_members(Attacker& attack, Model& model) {
    const Zone zone = draw<Zone>(attack);
    const Instant t = instant_of(attack);
    attack("Zone", [&] {
        (void)zone.instant(draw<CivilTime>(attack)), (void)zone.day(draw<CivilDate>(attack));
        (void)zone.iso(t, attack.integer()), (void)zone.day(t), (void)zone.clock(t);
        (void)zone.date_time(t), (void)zone.seconds(t);
    });
    attack("Instant", [&] {
        (void)t.iso(attack.integer()), (void)t.plus_days(attack.number()).jd_tt();
        (void)Instant::from_iso(text_of(attack)), (void)t.plus_seconds(attack.number()).iso();
        (void)Instant::from_utc(attack.number()).iso(0);
    });
    attack("Site", [&] { (void)site_of(attack).dip_deg(); });
    attack("period_minutes", [&] {
        (void)satellite_of(attack).period_minutes(), (void)satellite_of(attack).epoch().iso();
    });
    attack("rise_set_days", [&] {
        const Site site = site_of(attack);
        const auto first = draw<CivilDate>(attack);
        const CivilDate last = date_of_julian_day(julian_day_number(first) + 3);
        (void)rise_set_days(model, site, body_of(attack), zone, first, last);
        (void)rise_set_days(model, site, body_of(attack), zone, last, first);
        (void)rise_set_days(model, site, body_of(attack), zone, first, last,
                            draw<Altitude>(attack));
    });
    attack("MinorPlanetSurvey", [&] {
        MinorPlanetSurvey survey;
        (void)MinorPlanetSurvey::read(text_of(attack));
        for (int i = 0; i < 4; ++i) survey.add(body_of(attack));
        const double a = attack.number(), b = attack.number(), c = attack.number();
        (void)survey.size(), (void)survey.in_field(model, {a, b, c, attack.number()});
        (void)survey.near_earth(model, span_of(attack), a, {b});
    });
    attack("find_approaches", [&] {
        // An integration over millennia takes its seconds, and is the same a century long.
        const Span span = span_of(attack);
        const bool far = !(std::fabs(span.from.jd_tt() - 2459000) < 36525);
        const ApproachOptions options{attack.number(), far || attack.pick(2) == 0};
        (void)find_approaches(model, body_of(attack), span, options);
    });
    attack("anchor", [] { (void)Rising().anchor(); });
    attack("phenomenon", [] { (void)SatelliteView().phenomenon(); });
    attack("nights_of_year", [&] {
        if (attack.pick(6) == 0) (void)nights_of_year(model, zone, attack.integer(), 2);
    });
}

class Sky : public testing::TestWithParam<const char*> {};

TEST_P(Sky, SurvivesEveryFunction) {
    Attacker attack(23);
    for (int round = 0; attack.goes_on(round, 12, 8.0); ++round) {
        auto model = Model::open(GetParam());
        ASSERT_TRUE(model) << model.message();
        if (attack.pick(3) != 0) model->observe_from(site_of(attack));
        model->use(draw<SolsysReduction>(attack));
        model->move_to(instant_of(attack));
        Over over(attack, *model);
        attack_names(over), attack_places(over), attack_members(attack, *model);
        attack_searches(over), attack_places(over);
    }
    EXPECT_LT(attack.slowest, hostile::kLongest) << attack.slowest_name;
}

INSTANTIATE_TEST_SUITE_P(Sources, Sky, testing::Values("", SOLSYS_DE405),
                         [](const auto& source) {
                             return *source.param == 0 ? "Theory" : "File";
                         });

}  // namespace
