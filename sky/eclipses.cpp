#include "solsys/sky/eclipses.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/answer_or.h"
#include "core/constants.h"
#include "events/search/keep_model.h"

namespace solsys::sky {
namespace {

const char* type_name(int type) {
    switch (type) {
        case ECLIPSE_TOTAL:
            return "total";
        case ECLIPSE_HYBRID:
            return "hybrid";
        case ECLIPSE_ANNULAR:
            return "annular";
        case ECLIPSE_PARTIAL:
            return "partial";
        default:
            return "penumbral";
    }
}

Instant at_utc(double jd_ut) { return Instant::from_utc(jd_ut); }

// A time of a record; -1.0 stands for none.
std::optional<Instant> time_of(const ECLIPSE& e, double time) {
    if (time == -1.0) return std::nullopt;
    return Instant::from_utc(JulianDate{e.day, time});
}

GroundPoint ground_point(double latitude, double longitude, const Instant& at) {
    return {latitude / kDegree, longitude / kDegree, at};
}

Eclipse from_record(CSWEclipses& search, const ECLIPSE& e) {
    Eclipse out;
    out.kind = e.kind == ECLIPSE_LUNAR ? EclipseKind::kLunar : EclipseKind::kSolar;
    out.type = type_name(e.type);
    out.greatest = Instant::from_utc(JulianDate{e.day, e.greatest});
    out.begin = time_of(e, e.begin).value_or(out.greatest);
    out.end = time_of(e, e.end).value_or(out.greatest);
    out.magnitude = e.magnitude;
    out.gamma = e.gamma;
    out.saros = e.saros;
    out.lunation = e.lunation;
    out.central = e.centrality == ECLIPSE_CENTRAL;
    out.nearest = ground_point(e.place[1][0], e.place[1][1], out.greatest);
    for (int i = 0; i < 8; ++i) out.contacts[i] = time_of(e, e.contact[i]);
    EclipsePathPoint point;
    if (out.central && search.GetPathPoint(&e, e.day + e.greatest, &point)) {
        out.path_width_km = point.width;
        out.duration_s = point.duration;
    }
    out.record = e;
    return out;
}

// A precise search over a model, which is left as it was found.
class EclipseSearch {
  public:
    explicit EclipseSearch(Model& model) : keep_(model.classic()), eclipses_(&model.classic()) {
        eclipses_.SetPrecise(true);
    }
    CSWEclipses* operator->() { return &eclipses_; }
    CSWEclipses& operator*() { return eclipses_; }

  private:
    search::KeepModel keep_;
    CSWEclipses eclipses_;
};

struct Told {
    const EclipseOptions& options;
    CSWEclipses& search;
};

std::optional<EclipseMoment> moment(const ECLIPSE& e, double time, int i) {
    const std::optional<Instant> at = time_of(e, time);
    if (!at) return std::nullopt;
    return EclipseMoment{*at, e.altitude[i] / kDegree, e.azimuth[i] / kDegree,
                         e.position_angle[i] / kDegree};
}

class MapMaker {
  public:
    MapMaker(CSWEclipses& search, const ECLIPSE& record, EclipseMap& map)
        : search_(search), record_(record), map_(map) {}

    using Member = bool (CSWEclipses::*)(const ECLIPSE*, std::vector<EclipseCurve>*);
    void add(MapCurveKind kind, Member member) {
        if ((search_.*member)(&record_, &curves_)) take(kind, 0, "");
    }
    void add_magnitude(double magnitude, const char* label) {
        if (search_.GetMagnitudeCurve(&record_, magnitude, &curves_))
            take(MapCurveKind::kMagnitude, magnitude, label);
    }
    void add_isochrones() {
        if (search_.GetIsochrones(&record_, 30, &curves_))
            take(MapCurveKind::kIsochrone, 0, "");
    }
    void add_horizons() {
        static constexpr const char* kNames[] = {"P1", "U1", "U2", "greatest",
                                                 "U3", "U4", "P4"};
        static constexpr int kPlaces[] = {ECLIPSE_P1, ECLIPSE_U1, ECLIPSE_U2, -1,
                                          ECLIPSE_U3, ECLIPSE_U4, ECLIPSE_P4};
        if (!search_.GetVisibilityRegion(&record_, &curves_)) return;
        std::vector<std::string> names;
        for (int i = 0; i < 7; ++i) {
            const bool there = kPlaces[i] < 0 || map_.eclipse.contacts[kPlaces[i]].has_value();
            if (there) names.emplace_back(kNames[i]);
        }
        const std::size_t first = map_.curves.size();
        take(MapCurveKind::kMoonHorizon, 0, "");
        for (std::size_t i = 0; i < names.size() && first + i < map_.curves.size(); ++i)
            map_.curves[first + i].label = names[i];
    }
    void mark(const char* name, const double place[2], const Instant& at) {
        map_.points.push_back({name, ground_point(place[0], place[1], at)});
    }

  private:
    void take(MapCurveKind kind, double value, const std::string& label) {
        for (const EclipseCurve& curve : curves_) {
            if (curve.size() < 2) continue;
            MapCurve& out = map_.curves.emplace_back();
            out.kind = kind;
            out.value = value;
            out.label = label;
            out.at = at_utc(curve[curve.size() / 2].time);
            for (const EclipsePoint& p : curve)
                out.points.push_back(ground_point(p.latitude, p.longitude, at_utc(p.time)));
            if (kind == MapCurveKind::kIsochrone)
                out.label = out.at.plus_seconds(1).iso(0).substr(11, 5);
        }
    }

    CSWEclipses& search_;
    const ECLIPSE& record_;
    EclipseMap& map_;
    std::vector<EclipseCurve> curves_;
};

}  // namespace

const char* to_string(EclipseKind kind) {
    return kind == EclipseKind::kSolar ? "solar" : "lunar";
}

const char* to_string(MapCurveKind kind) {
    switch (kind) {
        case MapCurveKind::kCentralLine:
            return "central line";
        case MapCurveKind::kUmbralLimit:
            return "limit of the umbra";
        case MapCurveKind::kPenumbralLimit:
            return "limit of the penumbra";
        case MapCurveKind::kRiseSet:
            return "begins or ends at sunrise or sunset";
        case MapCurveKind::kHorizonMaximum:
            return "greatest at sunrise or sunset";
        case MapCurveKind::kMagnitude:
            return "magnitude";
        case MapCurveKind::kIsochrone:
            return "greatest phase at";
        case MapCurveKind::kMoonHorizon:
            return "Moon on the horizon";
    }
    return "";
}

std::vector<Eclipse> find_eclipses(Model& model, EclipseKind kind, const Span& span,
                                   const EclipseOptions& options) {
    EclipseSearch search(model);
    if (options.fiftieth) search->SetShadow(ECLIPSE_SHADOW_FIFTIETH);
    Told told{options, *search};
    if (options.progress) {
        search->SetProgressHandler(
            [](double done, void* context) {
                const Told& t = *static_cast<Told*>(context);
                if (!t.options.progress(done)) t.search.Stop();
            },
            &told);
    }
    const MemoryWatch memory;
    search->InitSearch(span.from.jd_utc(), span.to.jd_utc());
    search->SearchEclipses(kind == EclipseKind::kSolar ? ECLIPSE_SOLAR : ECLIPSE_LUNAR);
    std::vector<Eclipse> found;
    for (const ECLIPSE& e : search->GetResults()) found.push_back(from_record(*search, e));
    memory.check();
    return found;
}

std::optional<LocalEclipse> eclipse_at(Model& model, const Eclipse& eclipse, const Site& site) {
    EclipseSearch search(model);
    OBSERVER observer = site.observer();
    observer.location[0] = site.height_m / 1000;  // km
    ECLIPSE e;
    const bool visible =
        search->EclipseParamsForLocation(&eclipse.record, eclipse.record.kind, &e, &observer);
    const bool lunar = eclipse.kind == EclipseKind::kLunar;
    // A record that came back as it went in has no contact with the site.
    if (!lunar && e.contact[ECLIPSE_P1] != -1.0) return std::nullopt;

    LocalEclipse out;
    out.visible = visible;
    out.type = type_name(e.type);
    if (lunar) {
        const bool penumbral = e.type == ECLIPSE_PENUMBRAL;
        out.first = moment(e, e.begin, penumbral ? 0 : 1);
        out.fourth = moment(e, e.end, penumbral ? 6 : 5);
        out.maximum = moment(e, e.greatest, 3);
        if (e.type == ECLIPSE_TOTAL) {
            out.second = moment(e, e.total_begin, 2);
            out.third = moment(e, e.total_end, 4);
        }
    } else {
        out.first = moment(e, e.begin, 0);
        out.second = moment(e, e.total_begin, 1);
        out.maximum = moment(e, e.greatest, 2);
        out.third = moment(e, e.total_end, 3);
        out.fourth = moment(e, e.end, 4);
    }
    out.magnitude = e.local_magnitude;
    out.obscuration = e.obscuration;
    out.rise = time_of(e, e.rise);
    out.set = time_of(e, e.set);
    return out;
}

EclipseMap eclipse_map(Model& model, const Eclipse& eclipse) {
    const MemoryWatch memory;
    EclipseMap map;
    map.eclipse = eclipse;
    EclipseSearch search(model);
    const ECLIPSE& e = eclipse.record;
    MapMaker maker(*search, e, map);
    if (eclipse.kind == EclipseKind::kLunar) {
        maker.add_horizons();
        maker.mark("Moon in the zenith", e.place[1], eclipse.greatest);
        memory.check();
        return map;
    }
    maker.add(MapCurveKind::kRiseSet, &CSWEclipses::GetRiseSetCurves);
    maker.add(MapCurveKind::kHorizonMaximum, &CSWEclipses::GetMaximumAtHorizon);
    maker.add(MapCurveKind::kPenumbralLimit, &CSWEclipses::GetPenumbralLimits);
    maker.add_isochrones();
    static constexpr const char* kLabels[] = {"0.2", "0.4", "0.6", "0.8"};
    for (int i = 0; i < 4; ++i) maker.add_magnitude(0.2 * (i + 1), kLabels[i]);
    maker.add(MapCurveKind::kUmbralLimit, &CSWEclipses::GetUmbralLimits);
    maker.add(MapCurveKind::kCentralLine, &CSWEclipses::GetCentralLine);
    if (eclipse.contacts[ECLIPSE_P1]) maker.mark("first contact", e.place[0], eclipse.begin);
    maker.mark("greatest eclipse", e.place[1], eclipse.greatest);
    if (eclipse.contacts[ECLIPSE_P4]) maker.mark("last contact", e.place[2], eclipse.end);
    search->GetCentralPath(&e, 60, &map.path);
    EclipsePathPoint longest;
    if (search->GetGreatestDuration(&e, &longest)) {
        const double place[2] = {longest.latitude, longest.longitude};
        maker.mark("greatest duration", place, at_utc(longest.time));
    }
    memory.check();
    return map;
}

std::optional<MoonInShadow> moon_in_shadow(Model& model, const Eclipse& eclipse,
                                           const Instant& t) {
    EclipseSearch search(model);
    double v[5];
    if (!search->GetMoonInShadow(&eclipse.record, t.jd_utc(), v)) return std::nullopt;
    return MoonInShadow{v[0] / kDegree, v[1] / kDegree, v[2] / kDegree, v[3] / kDegree,
                        v[4] / kDegree};
}

std::optional<EclipsedSun> eclipsed_sun(Model& model, const Site& site, const Instant& t) {
    EclipseSearch search(model);
    OBSERVER observer = site.observer();
    observer.location[0] = site.height_m / 1000;  // km
    double v[3];
    if (!search->GetEclipsedSun(&observer, t.jd_utc(), v)) return std::nullopt;
    return EclipsedSun{v[0], v[1], v[2]};
}

}  // namespace solsys::sky
