// A host whose memory ends at any allocation: every exported member that may allocate, and the
// C interface's functions. usage: memory_host DE_FILE [name]
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "solsys/c_api.h"
#include "solsys/sky/sky.h"
#include "solsys/solsys.h"
#include "tests/memory/shortage.h"

namespace {

using memory::Answer;
namespace sky = solsys::sky;

const char* file = "";
constexpr const char* kLines[] = {
    "1 25544U 98067A   23055.54791667  .00016717  00000-0  10270-3 0  9007",
    "2 25544  51.6400 208.9163 0006317  69.9862  25.2906 15.50000000 00009"};
const std::string kSet = std::string(kLines[0]) + "\n" + kLines[1] + "\n";
const std::string kSets = kSet + "1 nonsense\n" + kSet;

Answer yes(bool answer) { return {1, !answer}; }
Answer count(double found) { return {found, found <= 0}; }

// All is set up before memory ends.
struct World {
    CSWSolSys fresh, model;
    std::optional<CSWVisibility> visibility;
    std::optional<CSWConjunc> conjunctions;
    std::optional<CSWEclipses> eclipses;
    std::optional<CSkyDiaryEvents> diary;
    std::vector<SSO_ID> pair{{SSO_PLNT, 1}, {SSO_PLNT, 2}};
    std::vector<SSO_ID> group{{SSO_PLNT, 1}, {SSO_PLNT, 2}, {SSO_PLNT, 10}};
    OBSERVER site;
    AsteroidRecord asteroid;
    CometRecord comet;
    UserObjectRecord own;
    SpacecraftRecord craft;
    TLERecord set;
    ECLIPSE solar, lunar;
    IntegRA15 integrator;
    TLECatalogue catalogue;
    std::vector<SSO_ID> list;
    double out[9];

    solsys_model* c_model = nullptr;
    solsys_body *moon = nullptr, *venus = nullptr;
    solsys_list *c_eclipses = nullptr, *satellites = nullptr;
    solsys_site c_site{};
    std::optional<sky::Model> sky_model;

    World();
};

World::World() {
    model.InitSys("");
    model.UpdateSys(2460000, 0.25);
    visibility.emplace(&model), conjunctions.emplace(&model);
    eclipses.emplace(&model), diary.emplace(&model);
    site.kind = LOCATION_SURFACE, site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[2] = 0.9;
    ElementsFromPerihelion(2, 0.3, 0.2, 1, 2, 2459900, 0, &asteroid.elements);
    comet.elements = asteroid.elements;
    own.central_number = 10, own.epoch_day = 2459900;
    own.state[0] = 1.5, own.state[4] = 0.014;
    craft.epoch_day = 2459900, craft.q = 1.2;
    TLEConvert lines;
    lines.Set(kLines[0], kLines[1]);
    set = *lines.GetRecord();
    eclipses->SetPrecise(true);
    eclipses->InitSearch(2461250, 2461300);
    eclipses->SearchNext(&solar, ECLIPSE_SOLAR);
    eclipses->InitSearch(2461250, 2461300);
    eclipses->SearchNext(&lunar, ECLIPSE_LUNAR);

    solsys_model_open(nullptr, &c_model);
    solsys_find_body("moon", nullptr, &moon), solsys_find_body("venus", nullptr, &venus);
    solsys_find_eclipses(c_model, SOLSYS_SOLAR, {2461250, 0}, {2461300, 0}, nullptr,
                         &c_eclipses);
    solsys_parse_satellites(kSet.c_str(), &satellites);
    c_site.size = sizeof c_site, c_site.latitude_deg = 51;
    sky_model.emplace(model);
}

struct Row {
    const char* name;
    Answer (*call)(World&);
};
#define YES(...)                                                                  \
    {                                                                             \
#__VA_ARGS__, []([[maybe_unused]] World & w) { return yes(__VA_ARGS__); } \
    }
#define COUNT(...)                                                                             \
    {                                                                                          \
#__VA_ARGS__,                                                                          \
            []([[maybe_unused]] World & w) { return count(static_cast<double>(__VA_ARGS__)); } \
    }

// What comes of an integration, a hundred days on.
Answer integrated(World& w, SSO_ID id, bool added) {
    const bool reached = added && w.model.GetHelVec2K(id, 0, w.out) && w.model.IsIntegrated(id);
    return {w.out[0], !reached};
}
#define INTEGRATED(type, ...)                                                         \
    {                                                                                 \
#__VA_ARGS__, [](World & w) { return integrated(w, {type, 1}, __VA_ARGS__); } \
    }

const Row kModel[] = {
    YES(w.fresh.InitSys("")),
    {"InitSys, file",
     [](World& w) {
         DE_Ephemeris::clear();
         return yes(w.fresh.InitSys(file) && w.fresh.HasEphemeris());
     }},
    {"open",
     [](World&) {
         DE_Ephemeris::clear();
         return yes(DE_Ephemeris::open(file));
     }},
    YES(DE_Ephemeris::readHeader(file) != nullptr),
    YES(w.model.UseEphemeris(false) && w.model.UseEphemeris(true)),
    {"UpdateSys, SetObserver",
     [](World& w) {
         w.model.UpdateSys(2460001, 0), w.model.UpdateSys(2460000, 0);
         return yes(w.model.SetObserver(&w.site));
     }},
    {"SetReduction",
     [](World& w) {
         w.model.SetReduction(REDUCTION_CLASSIC), w.model.SetReduction(REDUCTION_MODERN);
         return Answer{1, w.model.GetReduction() != REDUCTION_MODERN};
     }},
    YES(w.model.SetUT1(0.1)),
    YES(w.model.SetPolarMotion(0.1, 0.1)),
    {"SetEarthOrientation",
     [](World& w) {
         const EarthOrientationRow rows[] = {{60000, 0.1, 0, 0}, {60001, 0.1, 0, 0}};
         return count(w.model.SetEarthOrientation(rows, 2).rows);
     }},
    {"SetLeapSeconds",
     [](World& w) {
         const LeapSecond rows[] = {{41317, 10}, {57754, 37}};
         return yes(w.model.SetLeapSeconds(rows, 2, 60500));
     }},
    {"AddBodyRotationParams",
     [](World&) {
         const BodyRotationParams turn{};
         return yes(CSWSolSys::AddBodyRotationParams({SSO_ASTR, 7}, &turn));
     }},
    COUNT(w.model.GetFullList(&(w.list = {}))),
    COUNT(w.model.GetPlanetsList(&(w.list = {}))),
    COUNT(w.model.GetMoonsListFor({SSO_PLNT, 5}, &(w.list = {}))),
    {"GetRADecVis",
     [](World& w) {
         w.model.UpdateSys(2460001, 0), w.model.UpdateSys(2460000, 0);
         const bool seen = w.model.GetRADecVis({SSO_MOON, 501}, w.out, 0);
         return Answer{w.out[1], !seen};
     }},
    {"PhaseElongation",
     [](World& w) {
         double age = 0;
         const bool good = w.model.PhaseElongation({SSO_MOON, 301}, w.out, w.out + 1, w.out + 2,
                                                   w.out + 3, &age);
         return Answer{1, !good};
     }},
    YES(w.model.GetMtrxPl_Eq({SSO_PLNT, 5}, w.out, false)),
    YES(w.model.AddAsteroid(1, w.asteroid)),
    YES(w.model.AddComet(1, w.comet)),
    YES(w.model.AddSpacecraft(1, &w.craft, 1)),
    YES(w.model.AddUserObject(1, w.own)),
    YES(w.model.AddStar({SSO_STAR, 1}, StarObject{})),
    YES(w.model.AddSatellite(1, w.set)),
    YES(w.model.AddSatellite(1, kLines[0], kLines[1])),
    {"HoldAsteroid",
     [](World& w) {
         const tagAster_SPH_5 record{};
         w.model.HoldAsteroid(nullptr);
         return yes(w.model.HoldAsteroid(&record));
     }},
    INTEGRATED(SSO_FAST, w.model.AddIntegratedAsteroid(1, w.asteroid)),
    INTEGRATED(SSO_FCOM, w.model.AddIntegratedComet(1, w.comet)),
    INTEGRATED(SSO_FSCO, w.model.AddIntegratedUserObject(1, w.own)),
    INTEGRATED(SSO_ASTR, w.model.AddAsteroid(1, w.asteroid) && w.model.SetIntegrated({SSO_ASTR, 1})),
    {"RA15",
     [](World& w) {
         const double state[] = {2, 0, 0, 0, 0.012, 0.001};
         const bool good = w.integrator.Init() && w.integrator.Start(2460000, 0, state) &&
                           w.integrator.IntegrateTo(2463000, 0, w.out);
         return Answer{w.out[0], !good};
     }},
    {"ClearIntegratedAsteroids",
     [](World& w) {
         for (const int number : {1, 2}) w.model.AddIntegratedAsteroid(number, w.asteroid);
         const bool there = w.model.GetIntegratedAsteroid(2) != nullptr;
         w.model.ClearIntegratedAsteroids();
         return yes(there && w.model.GetIntegratedAsteroid(2) == nullptr);
     }},
    {"AddSpacecraft about asteroids",
     [](World& w) {
         SpacecraftRecord stretches[40];
         for (SpacecraftRecord& r : stretches) {
             r = w.craft;
             r.central_type = SSO_ASTR, r.central_number = 433;
         }
         const bool added = w.model.AddSpacecraft(2, stretches, 40);
         w.model.RemoveSpacecraft(2);
         return yes(added);
     }},
    {"observer with gravity",
     [](World& w) {
         OBSERVER aboard;
         aboard.body_type = SSO_SCFT, aboard.body_number = 1;
         w.model.setUseGravityForRNB(true);
         const bool set = w.model.AddSpacecraft(1, &w.craft, 1) && w.model.SetObserver(&aboard);
         return yes(set && w.model.UpdateSys(2460000, 0));
     }},
    {"TLEConvert::Read",
     [](World&) {
         std::vector<TLERecord> sets;
         std::vector<TLEFault> faults;
         return count(
             static_cast<double>(TLEConvert::Read(kSets.data(), kSets.size(), &sets, &faults)));
     }},
    {"TLECatalogue::Add",
     [](World& w) {
         w.catalogue.Clear();
         return yes(w.catalogue.Add(w.set) == 0 && w.catalogue.GetCount() == 1);
     }},
    {"paths",
     [](World&) {
         const char* path = "/a/path/that/is/longer/than/any/short/string";
         StarwickPath::SetPath(path), StarwickPath::SetWorkPath(path);
         StarwickPath::SetEphemerisPath(path);
         return Answer{1, std::strcmp(StarwickPath::GetEphemerisPath(), path) != 0};
     }},
    {"GetWorkPath",
     [](World&) {
         return Answer{1, StarwickPath::GetWorkPath()[0] == 0};
     }},
    YES(DE_Ephemeris::replaceEphemeris(file)),
};

#define CURVES(member, eclipse, ...)                                                \
    {                                                                               \
#member, [](World& w) {                                                           \
            std::vector<EclipseCurve> curves;                                     \
            const bool good =                                                     \
                w.eclipses->member(&w.eclipse __VA_OPT__(, ) __VA_ARGS__, &curves); \
            return Answer{static_cast<double>(curves.size()), !good};             \
        } \
    }
// A season of the diary's searches.
#define DIARY(member, ...)                                           \
    {                                                                \
#member, [](World& w) {                                            \
            w.diary->InitSearch(&w.site, 2461200, 2461330, false); \
            w.diary->ShowConjunctions(true);                       \
            return count(w.diary->member(__VA_ARGS__));            \
        } \
    }

const Row kSearches[] = {
    {"SearchVisibility",
     [](World& w) {
         w.visibility->InitSearch(2460000, 2460005, {SSO_PLNT, 10}, &w.site);
         return count(w.visibility->SearchVisibility());
     }},
    {"SearchCrossings",
     [](World& w) {
         w.visibility->InitSearch(2460000, 2460005, {SSO_PLNT, 10}, &w.site);
         return count(w.visibility->SearchCrossings(0, true));
     }},
    {"SearchRiseSet",
     [](World& w) {
         RISESETVIS request;
         request.from = 2460000, request.to = 2460003;
         w.visibility->InitSearch(2460000, 2460003, {SSO_MOON, 301}, &w.site);
         const bool good = w.visibility->SearchRiseSet(&request);
         const double found = request.days ? static_cast<double>(request.days->size()) : 0;
         w.visibility->FreeRiseSetVector(&request);
         return Answer{found, !good};
     }},
    COUNT((w.visibility->GetHorizon(2460000, 0, &w.site, 90)->size())),
    COUNT(w.visibility->GetZenith(2460000, 0, &w.site, w.out, w.out)),
    {"GetCurVisibility",
     [](World& w) {
         tagCURVISIBILITY place;
         place.type = SSO_MOON, place.number = 301, place.day = 2460000;
         return yes(w.visibility->GetCurVisibility(&w.site, &place));
     }},
    {"GetBrief_OI",
     [](World& w) {
         BRIEF_INFO info;
         return yes(w.visibility->GetBrief_OI(2460000, 0, {SSO_PLNT, 5}, &info));
     }},
    {"GetPhysInfo",
     [](World& w) {
         PHYSINFO info;
         return yes(w.visibility->GetPhysInfo({SSO_MOON, 501}, &info));
     }},
    {"FindNearestRiseSetTimes",
     [](World& w) {
         SSO_ID sun(SSO_PLNT, 10);
         w.visibility->InitSearch(2460000, 2460005, sun, &w.site);
         return yes(
             w.visibility->FindNearestRiseSetTimes(&sun, 2460000, 2, 0, w.out, w.out + 3));
     }},
    {"CSWConjunc::SearchAll",
     [](World& w) {
         w.conjunctions->InitSearch(2460000, 2460400, &w.pair, 0.1, false);
         return count(w.conjunctions->SearchAll());
     }},
    {"CSWConjunc::SearchNext, group",
     [](World& w) {
         CONJUN found;
         w.conjunctions->InitSearch(2460000, 2460400, &w.group, 0.5, false);
         return yes(w.conjunctions->SearchNext(&found));
     }},
    {"SearchEclipses",
     [](World& w) {
         w.eclipses->InitSearch(2460000, 2460400);
         return count(w.eclipses->SearchEclipses(ECLIPSE_LUNAR));
     }},
    {"SearchEclipsesForLocation",
     [](World& w) {
         w.eclipses->InitSearchForLocation(2460000, 2460400, &w.site);
         return count(w.eclipses->SearchEclipsesForLocation(ECLIPSE_LUNAR));
     }},
    {"EclipseParamsForLocation",
     [](World& w) {
         ECLIPSE local;
         return yes(
             w.eclipses->EclipseParamsForLocation(&w.solar, ECLIPSE_SOLAR, &local, &w.site));
     }},
    {"GetCentralPath",
     [](World& w) {
         std::vector<EclipsePathPoint> path;
         const bool good = w.eclipses->GetCentralPath(&w.solar, 120, &path);
         return Answer{static_cast<double>(path.size()), !good};
     }},
    YES(w.eclipses->FindTimeLimits(&w.solar, w.out)),
    YES(w.eclipses->FindPhaseTimeLimits(&w.solar, 0.5, w.out)),
    YES(w.eclipses->GetSpecialPoints(&w.solar)),
    YES(w.eclipses->GetMoonInShadow(&w.lunar, w.lunar.day + w.lunar.greatest, w.out)),
    CURVES(GetCentralLine, solar),
    CURVES(GetUmbralLimits, solar),
    CURVES(GetPenumbralLimits, solar),
    CURVES(GetRiseSetCurves, solar),
    CURVES(GetMaximumAtHorizon, solar),
    CURVES(GetMagnitudeCurve, solar, 0.5),
    CURVES(GetIsochrones, solar, 30),
    CURVES(GetVisibilityRegion, lunar),
    DIARY(SearchEquinox),
    DIARY(SearchInner, {SSO_PLNT, 1}),
    DIARY(SearchOuter, {SSO_PLNT, 5}),
    DIARY(SearchMoonPhases),
    DIARY(SearchMoonApsides),
    DIARY(SearchEclipses),
    DIARY(SearchShowers),
    DIARY(SearchConjPlanetsMoon),
    DIARY(SearchConjPlanetsPlanets),
    DIARY(SearchConjSSOSSO, {SSO_PLNT, 1}, {SSO_PLNT, 10}),
    DIARY(SearchAll),
};
#undef CURVES
#undef DIARY

// Constructors, copies and what answers by value may throw.
const Row kThrowing[] = {
    {"CSWSolSys()", [](World&) { return CSWSolSys(), yes(true); }},
    {"CSWVisibility()", [](World& w) { return CSWVisibility(&w.model), yes(true); }},
    {"CSWVisibility(), own model", [](World&) { return CSWVisibility(nullptr), yes(true); }},
    {"CSWConjunc()", [](World& w) { return CSWConjunc(&w.model), yes(true); }},
    {"CSWEclipses()", [](World& w) { return CSWEclipses(&w.model), yes(true); }},
    {"CSkyDiaryEvents()", [](World& w) { return CSkyDiaryEvents(&w.model), yes(true); }},
    {"IntegRA15()", [](World&) { return IntegRA15(), yes(true); }},
    {"TLECatalogue = ", [](World& w) { return TLECatalogue(w.catalogue) = {}, yes(true); }},
    {"TLEConvert = ", [](World&) { return TLEConvert(TLEConvert{}) = {}, yes(true); }},
    {"SaturnSat()", [](World&) { return SaturnSat(), yes(true); }},
    YES(sky::Model::open().has_value()),
    YES(sky::find_city("Oslo").has_value()),
    YES(!sky::find_city("Oslp").has_value()),
    YES(sky::find_body("moon").has_value()),
    YES(sky::Zone::find("Europe/Oslo").has_value()),
    {"sky::sky_chart",
     [](World& w) {
         w.sky_model->observe_from(*sky::find_city("Oslo"));
         return count(static_cast<double>(sky::sky_chart(*w.sky_model).stars.size()));
     }},
};

Answer status(solsys_status s) {
    return {static_cast<double>(s == SOLSYS_OK), s == SOLSYS_OUT_OF_MEMORY};
}
// A list's count, the list freed.
Answer rows(solsys_status s, solsys_list* list) {
    const double found = static_cast<double>(solsys_list_count(list));
    solsys_list_free(list);
    return {s == SOLSYS_OK ? found : -1, s == SOLSYS_OUT_OF_MEMORY};
}
#define LIST(function, ...)                                       \
    {                                                             \
#function, []([[maybe_unused]] World& w) {                      \
            solsys_list* list = nullptr;                        \
            const solsys_status s = function(__VA_ARGS__, &list); \
            return rows(s, list);                               \
        } \
    }
#define PLAIN(function, ...)                                                                \
    {                                                                                       \
#function, []([[maybe_unused]] World & w) { return status(function(__VA_ARGS__)); } \
    }
constexpr solsys_altitude kHorizon{0, 0};
constexpr solsys_instant kFrom{2460000, 0}, kTo{2460100, 0};
solsys_instant t;
solsys_site found_site{sizeof found_site, 0, 0, 0, 0, {}, {}, {}};
solsys_place place, places[4];
solsys_horizontal horizontals[4];
double numbers[24];
char text[200];

const Row kInterface[] = {
    {"solsys_model_open",
     [](World&) {
         solsys_model* model = nullptr;
         const solsys_status s = solsys_model_open(nullptr, &model);
         solsys_model_free(model);
         return status(s);
     }},
    {"solsys_find_body",
     [](World&) {
         solsys_body* body = nullptr;
         const solsys_status s = solsys_find_body("titan", &kFrom, &body);
         solsys_body_free(body);
         return status(s);
     }},
    {"solsys_body_from_elements",
     [](World&) {
         solsys_body* body = nullptr;
         const solsys_status s = solsys_body_from_elements(
             "epoch=jd:2459800.5,a=2,e=0.1,i=1,node=0,peri=0,M=0", &body);
         solsys_body_free(body);
         return status(s);
     }},
    {"solsys_control_new",
     [](World&) {
         solsys_control* control = nullptr;
         const solsys_status s = solsys_control_new(nullptr, nullptr, &control);
         solsys_control_free(control);
         return status(s);
     }},
    PLAIN(solsys_parse_time, "2026-08-12 18:00", "Europe/Oslo", &t),
    PLAIN(solsys_time_text, kFrom, "Europe/Oslo", 0, text, sizeof text),
    PLAIN(solsys_find_city, "Oslo", &found_site),
    PLAIN(solsys_parse_site, "51.5,-0.1", &found_site),
    PLAIN(solsys_model_set_reduction, w.c_model, SOLSYS_CLASSIC),
    PLAIN(solsys_model_set_earth, w.c_model, 0.1, 0, 0),
    PLAIN(solsys_model_observe_from, w.c_model, &w.c_site),
    PLAIN(solsys_model_move_to, w.c_model, kFrom),
    PLAIN(solsys_model_source, w.c_model, text, sizeof text),
    PLAIN(solsys_apparent_place, w.c_model, w.moon, &place),
    PLAIN(solsys_apparent_places, w.c_model, &w.moon, 1, &kFrom, 1, places, 1, nullptr,
          nullptr),
    PLAIN(solsys_astrometric_places, w.c_model, &w.moon, 1, &kFrom, 1, places, 1, nullptr,
          nullptr),
    PLAIN(solsys_heliocentric_states, w.c_model, &w.moon, 1, &kFrom, 1, numbers, 6, nullptr,
          nullptr),
    PLAIN(solsys_magnitudes, w.c_model, &w.venus, 1, &kFrom, 1, numbers, 1, nullptr, nullptr),
    PLAIN(solsys_horizontals, w.c_model, &w.c_site, 1, &w.moon, 1, &kFrom, 1, horizontals, 1,
          nullptr, nullptr),
    LIST(solsys_find_bodies, "moon", nullptr),
    LIST(solsys_conjunctions, w.c_model, w.moon, w.venus, kFrom, kTo, 0, 10, nullptr),
    LIST(solsys_gatherings, w.c_model, &w.moon, 1, kFrom, {2460030, 0}, 10, nullptr),
    LIST(solsys_find_eclipses, w.c_model, SOLSYS_SOLAR, {2461250, 0}, {2461300, 0}, nullptr),
    LIST(solsys_eclipse_map, w.c_model, w.c_eclipses, 0),
    LIST(solsys_diary, w.c_model, kFrom, {2460030, 0}, nullptr, 0, nullptr),
    LIST(solsys_parse_satellites, kSet.c_str()),
    LIST(solsys_passes, w.c_model, &w.c_site, w.satellites, 0, -1, kFrom, {2460002, 0}, 0, 10,
         nullptr),
    LIST(solsys_passages, w.c_model, &w.c_site, w.venus, &kHorizon, 1, kFrom, {2460002, 0}),
    {"solsys_risings",
     [](World& w) {
         solsys_list* list = nullptr;
         int32_t up = 0;
         const solsys_status s =
             solsys_risings(w.c_model, &w.c_site, w.venus, kFrom, {2460003, 0}, &list, &up);
         return rows(s, list);
     }},
};

Answer (*running)(World&) = nullptr;
Answer run(void* world) { return running(*static_cast<World*>(world)); }

template <std::size_t n>
int check(const Row (&table)[n], World& world, const char* only, bool may_throw = false) {
    int bad = 0;
    for (const Row& row : table) {
        if (only != nullptr && std::strcmp(only, row.name) != 0) continue;
        running = row.call;
        bad += memory::survives(row.name, run, &world, may_throw);
    }
    return bad;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) file = argv[1];
    const char* only = argc > 2 ? argv[2] : nullptr;
    World world;
    const int bad = check(kModel, world, only) + check(kSearches, world, only) +
                    check(kThrowing, world, only, true) + check(kInterface, world, only);
    return bad != 0;
}
