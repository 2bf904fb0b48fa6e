// The inside of CSkyDiaryEvents.
#pragma once

#include <cmath>

#include "core/answer_or.h"
#include "events/diary/geocentric_sky.h"
#include "events/search/control.h"
#include "events/search/crossings.h"
#include "events/search/results.h"
#include "events/search/search_model.h"
#include "events/search/span.h"
#include "solsys/diary.h"

namespace solsys::diary {

struct Diary {
    explicit Diary(CSWSolSys* borrowed) : model(borrowed) {}

    // A search into the list. \return how many it holds; -1, and the list as before, where
    // memory ends
    template <class Work>
    int search(Work&& work);
    // Keeps the first events of the list only.
    void cut_back(int count);

    // Before every search: whether there is anything to search, and the geocentric observer.
    bool ready();
    [[nodiscard]] int count() const { return results.count(); }
    [[nodiscard]] bool within(double jd_tt) const {
        return jd_tt >= span.start && jd_tt < span.end;
    }

    // Appends an event at a dynamical time, with a copy of its record, and hands it on. False
    // when the search is to end.
    template <class Detail>
    bool add(double jd_tt, std::int32_t kind, const Detail& detail);

    // All zeros of f in the span widened by so many days at either end, each as
    // found(t, whether f rises). `amplitude` is the usual size of f. False when stopped.
    template <class Function, class Found>
    bool zeros(const Function& f, double bound, double amplitude, const Found& found,
               double widened = 0);

    // Azimuth and altitude for the site at an instant; leaves the model geocentric.
    void horizontal(const Target& target, double jd_tt, double& azimuth, double& altitude);
    OBSERVER site_in_au() const;

    SKYEVENT_SUN sun_detail(GeocentricSky& sky, double jd_tt);
    SKYEVENT_BODY body_detail(GeocentricSky& sky, double jd_tt, const Target& first,
                              const Target* second);

    // The searches of CSkyDiaryEvents that `SearchAll` puts together; all end when stopped.
    void seasons();
    void inner(const SSO_ID& planet);
    void outer(const SSO_ID& planet);
    void phases();
    void moon_and_planets();
    void planets_and_planets();
    void pair(const SSO_ID& first, const SSO_ID& second);

    bool find_seasons();
    bool find_earth_apsides();
    bool find_inner(const SSO_ID& planet);
    bool find_outer(const SSO_ID& planet);
    bool find_phases();
    bool find_moon_apsides();
    bool find_conjunctions(const Target& first, const Target& second, std::int32_t kind);
    bool find_eclipses();
    bool find_showers();
    bool fill_shower(SHOWER& shower);

    search::SearchModel model;
    search::Control control;
    search::Span span;
    search::Results<SkyEvent, SkyEventCallback, &SkyEventCallback::OnEvent> results;
    OBSERVER geocentre;
    OBSERVER site;
    bool has_site = false;
    bool local = false;
    bool show_conjunctions = false;
};

// A copy of an event with a copy of its record.
SkyEvent* copy_of(const SkyEvent& event);
void free_detail(const SkyEvent& event);

template <class Work>
int Diary::search(Work&& work) {
    const int before = count();
    const bool whole = answer_or(false, [&] { return work(), true; });
    if (!whole) cut_back(before);
    return whole ? count() : -1;
}

template <class Detail>
bool Diary::add(double jd_tt, std::int32_t kind, const Detail& detail) {
    results.make_room();  // or the record would be nobody's
    const SkyEvent event{search::ut_from_tt(jd_tt), kind, new Detail(detail)};
    return results.add(event, control, copy_of);
}

template <class Function, class Found>
bool Diary::zeros(const Function& f, double bound, double amplitude, const Found& found,
                  double widened) {
    search::Span walk{span.start - widened, span.end + widened, span.start - widened};
    // Between two samples of this size a zero is excluded over somewhat more than this.
    const double step = std::sqrt(3 * amplitude / bound);
    return crossings(walk, control, f, bound, step, [&](const search::Bracket& x) {
        const double t = search::root(f, x, 0.1 * search::kSecond).t;
        return (widened == 0 && !within(t)) || found(t, x.a.f < 0);
    });
}

}  // namespace solsys::diary

struct CSkyDiaryEvents::State : solsys::diary::Diary {
    using Diary::Diary;
};
