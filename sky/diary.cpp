#include "solsys/sky/diary.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "core/answer_or.h"
#include "events/search/keep_model.h"
#include "sky/diary_text.h"
#include "sky/stars.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

// Of Hipparcos: Aldebaran, Pollux, Regulus, Spica, Antares, Alcyone.
constexpr int kDiaryStars[] = {21421, 37826, 49669, 65474, 80763, 17702};
constexpr int kPlanets[] = {1, 2, 4, 5, 6, 7, 8, 9};

std::optional<double> some(double value, double scale = 1) {
    if (value == SKYEVENT_NONE || !std::isfinite(value)) return std::nullopt;
    return value * scale;
}

const StarRow* bright_star(int hip) {
    const auto rows = bright_stars();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [hip](const StarRow& r) { return r.hip == hip; });
    return row == rows.end() ? nullptr : &*row;
}

// Collects the events of a diary as they come, in types.
class Collector : public SkyEventCallback {
  public:
    Collector(std::vector<DiaryEvent>& events, const DiaryOptions& options,
              const SearchControl* control)
        : events_(events), options_(options), control_(control) {}

    [[nodiscard]] bool wants(int kind) const {
        return options_.kinds.empty() || std::find(options_.kinds.begin(), options_.kinds.end(),
                                                   kind) != options_.kinds.end();
    }
    // Whether any kind of a range is wanted.
    [[nodiscard]] bool wants(int first, int last) const {
        for (int kind = first; kind <= last; ++kind)
            if (wants(kind)) return true;
        return false;
    }
    // The star that the next events are about.
    void about(const Body* star) { star_ = star; }

    bool OnEvent(SkyEvent* event) override {
        const std::unique_ptr<SkyEvent, void (*)(SkyEvent*)> owned(event, FreeSkyEvent);
        if (wants(event->kind)) take(*event);
        return control_ == nullptr || !control_->stopped();
    }

  private:
    void take(const SkyEvent& event) {
        DiaryEvent out;
        out.at = Instant::from_utc(event.time);
        out.kind = event.kind;
        if (event.kind <= SKYEVENT_EARTH_APHELION) {
            fill(out, *static_cast<const SKYEVENT_SUN*>(event.detail));
        } else if (event.kind <= SKYEVENT_LAST_QUARTER) {
            fill(out, *static_cast<const SKYEVENT_PHASE*>(event.detail));
        } else if (event.kind == SKYEVENT_SOLAR_ECLIPSE ||
                   event.kind == SKYEVENT_LUNAR_ECLIPSE) {
            out.text = eclipse_text(*static_cast<const ECLIPSE*>(event.detail));
        } else if (event.kind == SKYEVENT_METEOR_SHOWER) {
            fill(out, *static_cast<const SHOWER*>(event.detail));
        } else {
            fill(out, *static_cast<const SKYEVENT_BODY*>(event.detail));
        }
        const bool conjunction =
            event.kind >= SKYEVENT_MOON_CONJUNCTION && event.kind <= SKYEVENT_STAR_CONJUNCTION;
        if (conjunction && *out.separation_deg > options_.widest_conjunction_deg) return;
        if (out.text.empty()) out.text = text_of(out);
        events_.push_back(std::move(out));
    }

    static void fill(DiaryEvent& out, const SKYEVENT_SUN& d) {
        out.longitude_deg = d.longitude * kDegrees;
        out.distance_au = d.distance;
        out.azimuth_deg = some(d.azimuth, kDegrees);
        out.altitude_deg = some(d.altitude, kDegrees);
    }
    static void fill(DiaryEvent& out, const SKYEVENT_PHASE& d) {
        out.longitude_deg = d.longitude * kDegrees;
        out.latitude_deg = d.latitude * kDegrees;
        out.distance_au = d.distance / kAuKm;
        out.hours_to_perigee = some(d.hours_to_perigee);
        out.hours_to_apogee = some(d.hours_to_apogee);
        out.azimuth_deg = some(d.azimuth, kDegrees);
        out.altitude_deg = some(d.altitude, kDegrees);
    }
    static void fill(DiaryEvent& out, const SHOWER& d) {
        out.text = std::string(d.name) + " at maximum";
        if (d.zhr != SKYEVENT_NONE)
            out.text += ", up to " + std::to_string(static_cast<int>(d.zhr)) + " an hour";
        out.zhr = some(d.zhr);
        out.moon_illuminated = d.moon_illuminated;
        out.azimuth_deg = some(d.azimuth, kDegrees);
        out.altitude_deg = some(d.altitude, kDegrees);
    }
    void fill(DiaryEvent& out, const SKYEVENT_BODY& d) const {
        out.first = Body(SSO_ID(d.type1, d.number1));
        if (out.kind == SKYEVENT_STAR_CONJUNCTION && star_ != nullptr) {
            out.second = *star_;
        } else if (d.type2 != 0) {
            out.second = Body(SSO_ID(d.type2, d.number2));
        }
        out.separation_deg = some(d.separation, kDegrees);
        out.position_angle_deg = some(d.position_angle, kDegrees);
        out.elongation_deg = some(d.elongation, kDegrees);
        out.magnitude = some(d.magnitude);
        out.second_magnitude = some(d.magnitude2);
        out.distance_au = some(d.distance);
        if (d.constellation < 88) out.constellation = d.constellation;
        out.in_longitude = d.in_longitude != 0;
        for (std::size_t i = 0; i < 4; ++i)
            if (d.contact[i] != SKYEVENT_NONE)
                out.contacts[i] = Instant::from_utc(d.contact[i]);
        out.azimuth_deg = some(d.azimuth, kDegrees);
        out.altitude_deg = some(d.altitude, kDegrees);
    }

    std::vector<DiaryEvent>& events_;
    const DiaryOptions& options_;
    const SearchControl* control_;
    const Body* star_ = nullptr;
};

struct Progress {
    SearchControl* control;
    CSkyDiaryEvents* diary;

    static void step(double fraction, void* self) {
        auto& p = *static_cast<Progress*>(self);
        if (p.control == nullptr) return;
        p.control->tell(fraction);
        if (p.control->stopped()) p.diary->Stop();
    }
};

void search_stars(CSkyDiaryEvents& diary, Collector& collector) {
    for (const int hip : kDiaryStars) {
        const StarRow* row = bright_star(hip);
        if (row == nullptr) continue;
        const Body body = body_of(*row);
        StarObject star = star_object(*row);
        collector.about(&body);
        diary.ConjStarSSO(moon().id, &star);
        for (const int planet : kPlanets) diary.ConjStarSSO(SSO_ID(SSO_PLNT, planet), &star);
    }
}

void search(CSkyDiaryEvents& diary, Collector& wanted, bool stars) {
    if (wanted.wants(SKYEVENT_MARCH_EQUINOX, SKYEVENT_EARTH_APHELION)) diary.SearchEquinox();
    if (wanted.wants(SKYEVENT_INFERIOR_CONJUNCTION, SKYEVENT_APHELION) ||
        wanted.wants(SKYEVENT_TRANSIT))
        for (const int planet : {1, 2}) diary.SearchInner(SSO_ID(SSO_PLNT, planet));
    if (wanted.wants(SKYEVENT_STATIONARY_RETROGRADE, SKYEVENT_APHELION) ||
        wanted.wants(SKYEVENT_OPPOSITION, SKYEVENT_FARTHEST))
        for (const int planet : {4, 5, 6, 7, 8, 9}) diary.SearchOuter(SSO_ID(SSO_PLNT, planet));
    if (wanted.wants(SKYEVENT_NEW_MOON, SKYEVENT_LAST_QUARTER)) diary.SearchMoonPhases();
    if (wanted.wants(SKYEVENT_CLOSEST, SKYEVENT_FARTHEST)) diary.SearchMoonApsides();
    if (wanted.wants(SKYEVENT_SOLAR_ECLIPSE, SKYEVENT_LUNAR_ECLIPSE)) diary.SearchEclipses();
    if (wanted.wants(SKYEVENT_METEOR_SHOWER)) diary.SearchShowers();
    if (wanted.wants(SKYEVENT_MOON_CONJUNCTION)) diary.SearchConjPlanetsMoon();
    if (wanted.wants(SKYEVENT_PLANET_CONJUNCTION)) diary.SearchConjPlanetsPlanets();
    if (stars && wanted.wants(SKYEVENT_STAR_CONJUNCTION)) search_stars(diary, wanted);
}

}  // namespace

std::vector<DiaryEvent> diary(Model& model, const Span& span, const DiaryOptions& options,
                              SearchControl* control) {
    std::vector<DiaryEvent> events;
    const search::KeepModel keep(model.classic());
    Collector collector(events, options, control);
    CSkyDiaryEvents searches(&model.classic());
    Progress progress{control, &searches};
    searches.SetCallback(&collector);
    searches.SetProgressHandler(&Progress::step, &progress);
    searches.ShowConjunctions(true);
    OBSERVER site;
    if (model.site()) {
        site = model.site()->observer();
        site.location[0] = model.site()->height_m / 1000;
    }
    const MemoryWatch memory;
    searches.InitSearch(model.site() ? &site : nullptr, span.from.jd_utc(), span.to.jd_utc(),
                        model.site().has_value());
    search(searches, collector, options.stars);
    memory.check();
    std::stable_sort(events.begin(), events.end(),
                     [](const DiaryEvent& a, const DiaryEvent& b) { return a.at < b.at; });
    return events;
}

}  // namespace solsys::sky
