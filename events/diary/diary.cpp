// The life of a diary, its list, and the order of its searches.
#include "solsys/diary.h"

#include <algorithm>
#include <type_traits>
#include <vector>

#include "events/diary/search.h"
#include "solsys/conjunctions.h"

using solsys::diary::Target;

namespace {

// Beyond any ephemeris [JD]: what is asked for outside is not walked through.
constexpr double kFirst = -4e6;
constexpr double kLast = 9e6;

constexpr int kPlanets[] = {1, 2, 4, 5, 6, 7, 8, 9};

template <class Visitor>
void with_record_type(const SkyEvent& event, Visitor&& visit) {
    const std::int32_t kind = event.kind;
    if (event.detail == nullptr || kind < SKYEVENT_MARCH_EQUINOX || kind > SKYEVENT_TRANSIT)
        return;
    if (kind <= SKYEVENT_EARTH_APHELION) {
        visit(static_cast<SKYEVENT_SUN*>(event.detail));
    } else if (kind <= SKYEVENT_LAST_QUARTER) {
        visit(static_cast<SKYEVENT_PHASE*>(event.detail));
    } else if (kind == SKYEVENT_METEOR_SHOWER) {
        visit(static_cast<SHOWER*>(event.detail));
    } else if (kind == SKYEVENT_SOLAR_ECLIPSE || kind == SKYEVENT_LUNAR_ECLIPSE) {
        visit(static_cast<ECLIPSE*>(event.detail));
    } else {
        visit(static_cast<SKYEVENT_BODY*>(event.detail));
    }
}

}  // namespace

namespace solsys::diary {

SkyEvent* copy_of(const SkyEvent& event) {
    auto* copy = new SkyEvent{event.time, event.kind, nullptr};
    with_record_type(event, [copy](auto* detail) {
        copy->detail = new std::remove_pointer_t<decltype(detail)>(*detail);
    });
    return copy;
}

void free_detail(const SkyEvent& event) {
    with_record_type(event, [](auto* detail) { delete detail; });
}

}  // namespace solsys::diary

void FreeSkyEvent(SkyEvent* event) {
    if (event == nullptr) return;
    solsys::diary::free_detail(*event);
    delete event;
}

bool solsys::diary::Diary::ready() {
    if (!model || control.stopped() || span.over()) return false;
    model->SetObserver(&geocentre);
    return true;
}

CSkyDiaryEvents::CSkyDiaryEvents(CSWSolSys* model) : state_(std::make_unique<State>(model)) {
    state_->geocentre.kind = LOCATION_BODY_FIXED;
    state_->geocentre.body_type = SSO_PLNT;
    state_->geocentre.body_number = 3;
}

CSkyDiaryEvents::~CSkyDiaryEvents() { ResListReset(); }

void CSkyDiaryEvents::InitSearch(OBSERVER* site, double start, double end, bool local) {
    State& s = *state_;
    s.local = local;
    s.control.reset();
    s.span = solsys::search::span_of_ut(std::max(start, kFirst), std::min(end, kLast));
    ResListReset();
    if (s.model) {
        if (!s.span.over()) s.model->SetTime(0, s.span.start, true);
        s.model->SetObserver(&s.geocentre);
    }
    s.has_site = site != nullptr;
    if (site != nullptr) s.site = *site;
}

int CSkyDiaryEvents::SearchAll() {
    State& s = *state_;
    if (!s.model) return 0;
    SearchEquinox();
    for (const int inner : {1, 2}) {
        if (s.control.stopped()) return 0;
        SearchInner(SSO_ID(SSO_PLNT, inner));
    }
    for (const int outer : {4, 5, 6, 7, 8, 9}) {
        if (s.control.stopped()) return 0;
        SearchOuter(SSO_ID(SSO_PLNT, outer));
    }
    if (s.control.stopped()) return 0;
    SearchMoonPhases();
    if (s.control.stopped()) return 0;
    SearchConjPlanetsMoon();
    if (s.control.stopped()) return 0;
    SearchConjPlanetsPlanets();
    return s.control.stopped() ? 0 : s.count();
}

int CSkyDiaryEvents::SearchEquinox() {
    State& s = *state_;
    if (s.ready() && s.find_seasons()) s.find_earth_apsides();
    return s.count();
}

int CSkyDiaryEvents::SearchInner(SSO_ID planet) {
    const bool inner = planet.type == SSO_PLNT && (planet.number == 1 || planet.number == 2);
    if (inner && state_->ready()) state_->find_inner(planet);
    return state_->count();
}

int CSkyDiaryEvents::SearchOuter(SSO_ID planet) {
    const bool outer = planet.type == SSO_PLNT && planet.number >= 4 && planet.number <= 9;
    if (outer && state_->ready()) state_->find_outer(planet);
    return state_->count();
}

int CSkyDiaryEvents::SearchMoonPhases() {
    if (state_->ready()) state_->find_phases();
    return state_->count();
}

int CSkyDiaryEvents::SearchMoonApsides() {
    if (state_->ready()) state_->find_moon_apsides();
    return state_->count();
}

int CSkyDiaryEvents::SearchEclipses() {
    if (state_->ready()) state_->find_eclipses();
    return state_->count();
}

int CSkyDiaryEvents::SearchShowers() {
    if (state_->ready()) state_->find_showers();
    return state_->count();
}

int CSkyDiaryEvents::SearchConjPlanetsMoon() {
    for (const int planet : kPlanets)
        SearchConjSSOSSO(solsys::diary::kMoon, SSO_ID(SSO_PLNT, planet));
    return state_->count();
}

int CSkyDiaryEvents::SearchConjPlanetsPlanets() {
    State& s = *state_;
    if (!s.model) return s.count();
    // Places the model and its observer for every pair, as for a search of its own.
    CSWConjunc conjunctions(s.model.get());
    for (const int i : kPlanets) {
        for (const int j : kPlanets) {
            if (j <= i || s.control.stopped()) continue;
            std::vector<SSO_ID> pair{SSO_ID(SSO_PLNT, i), SSO_ID(SSO_PLNT, j)};
            conjunctions.InitSearch(solsys::search::ut_from_tt(s.span.start),
                                    solsys::search::ut_from_tt(s.span.end), &pair, 0, false);
            SearchConjSSOSSO(pair[0], pair[1]);
        }
    }
    return s.count();
}

int CSkyDiaryEvents::SearchConjSSOSSO(SSO_ID const& first, SSO_ID const& second) {
    State& s = *state_;
    if (s.show_conjunctions && s.ready() && !(first == second)) {
        const bool moon = first == solsys::diary::kMoon || second == solsys::diary::kMoon;
        s.find_conjunctions({first}, {second},
                            moon ? SKYEVENT_MOON_CONJUNCTION : SKYEVENT_PLANET_CONJUNCTION);
    }
    return s.count();
}

int CSkyDiaryEvents::ConjStarSSO(SSO_ID object, StarObject* star) {
    State& s = *state_;
    if (s.show_conjunctions && star != nullptr && s.ready())
        s.find_conjunctions({object}, {SSO_ID(SSO_STAR, 0), star}, SKYEVENT_STAR_CONJUNCTION);
    return s.count();
}

bool CSkyDiaryEvents::CalcShower(SHOWER* shower) {
    if (shower == nullptr || !state_->model) return false;
    state_->model->SetObserver(&state_->geocentre);
    return state_->fill_shower(*shower);
}

bool CSkyDiaryEvents::SearchNext(CONJUN*) { return false; }

bool CSkyDiaryEvents::ResListReset() {
    for (const SkyEvent& event : state_->results.list()) solsys::diary::free_detail(event);
    state_->results.clear();
    return true;
}

const std::vector<SkyEvent>& CSkyDiaryEvents::GetResults() const {
    return state_->results.list();
}

void CSkyDiaryEvents::SetCallback(SkyEventCallback* callback) {
    state_->results.set_callback(callback);
}

void CSkyDiaryEvents::SetProgressHandler(void (*progress)(double fraction, void* context),
                                         void* context) {
    state_->control.on_progress(progress, context);
}

void CSkyDiaryEvents::Stop() { state_->control.stop(); }

bool CSkyDiaryEvents::IsCalculationsInterrupt() const { return state_->control.stopped(); }

void CSkyDiaryEvents::ShowConjunctions(bool show) { state_->show_conjunctions = show; }
