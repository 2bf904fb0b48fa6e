// The life of a diary, its list, and the order of its searches.
#include "solsys/diary.h"

#include <algorithm>
#include <memory>
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
    auto copy = std::make_unique<SkyEvent>(SkyEvent{event.time, event.kind, nullptr});
    with_record_type(event, [&copy](auto* detail) {
        copy->detail = new std::remove_pointer_t<decltype(detail)>(*detail);
    });
    return copy.release();
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

namespace solsys::diary {

bool Diary::ready() {
    if (!model || control.stopped() || span.over()) return false;
    model->SetObserver(&geocentre);
    return true;
}

void Diary::cut_back(int count) {
    const auto& list = results.list();
    for (std::size_t i = static_cast<std::size_t>(count); i < list.size(); ++i)
        free_detail(list[i]);
    results.cut_back(count);
}

void Diary::seasons() {
    if (ready() && find_seasons()) find_earth_apsides();
}

void Diary::inner(const SSO_ID& planet) {
    const bool inner = planet.type == SSO_PLNT && (planet.number == 1 || planet.number == 2);
    if (inner && ready()) find_inner(planet);
}

void Diary::outer(const SSO_ID& planet) {
    const bool outer = planet.type == SSO_PLNT && planet.number >= 4 && planet.number <= 9;
    if (outer && ready()) find_outer(planet);
}

void Diary::phases() {
    if (ready()) find_phases();
}

void Diary::moon_and_planets() {
    for (const int planet : kPlanets) pair(kMoon, SSO_ID(SSO_PLNT, planet));
}

void Diary::planets_and_planets() {
    if (!model) return;
    // Places the model and its observer for every pair, as for a search of its own.
    CSWConjunc conjunctions(model.get());
    for (const int i : kPlanets) {
        for (const int j : kPlanets) {
            if (j <= i || control.stopped()) continue;
            std::vector<SSO_ID> both{SSO_ID(SSO_PLNT, i), SSO_ID(SSO_PLNT, j)};
            conjunctions.InitSearch(search::ut_from_tt(span.start),
                                    search::ut_from_tt(span.end), &both, 0, false);
            pair(both[0], both[1]);
        }
    }
}

void Diary::pair(const SSO_ID& first, const SSO_ID& second) {
    if (!show_conjunctions || !ready() || first == second) return;
    const bool moon = first == kMoon || second == kMoon;
    find_conjunctions({first}, {second},
                      moon ? SKYEVENT_MOON_CONJUNCTION : SKYEVENT_PLANET_CONJUNCTION);
}

}  // namespace solsys::diary

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
    const int found = s.search([&] {
        s.seasons();
        for (const int inner : {1, 2}) s.inner(SSO_ID(SSO_PLNT, inner));
        for (const int outer : {4, 5, 6, 7, 8, 9}) s.outer(SSO_ID(SSO_PLNT, outer));
        s.phases();
        s.moon_and_planets();
        s.planets_and_planets();
    });
    return s.control.stopped() ? 0 : found;
}

int CSkyDiaryEvents::SearchEquinox() {
    return state_->search([this] { state_->seasons(); });
}

int CSkyDiaryEvents::SearchInner(SSO_ID planet) {
    return state_->search([&] { state_->inner(planet); });
}

int CSkyDiaryEvents::SearchOuter(SSO_ID planet) {
    return state_->search([&] { state_->outer(planet); });
}

int CSkyDiaryEvents::SearchMoonPhases() {
    return state_->search([this] { state_->phases(); });
}

int CSkyDiaryEvents::SearchMoonApsides() {
    return state_->search([this] {
        if (state_->ready()) state_->find_moon_apsides();
    });
}

int CSkyDiaryEvents::SearchEclipses() {
    return state_->search([this] {
        if (state_->ready()) state_->find_eclipses();
    });
}

int CSkyDiaryEvents::SearchShowers() {
    return state_->search([this] {
        if (state_->ready()) state_->find_showers();
    });
}

int CSkyDiaryEvents::SearchConjPlanetsMoon() {
    return state_->search([this] { state_->moon_and_planets(); });
}

int CSkyDiaryEvents::SearchConjPlanetsPlanets() {
    return state_->search([this] { state_->planets_and_planets(); });
}

int CSkyDiaryEvents::SearchConjSSOSSO(SSO_ID const& first, SSO_ID const& second) {
    return state_->search([&] { state_->pair(first, second); });
}

int CSkyDiaryEvents::ConjStarSSO(SSO_ID object, StarObject* star) {
    State& s = *state_;
    return s.search([&] {
        if (s.show_conjunctions && star != nullptr && s.ready())
            s.find_conjunctions({object}, {SSO_ID(SSO_STAR, 0), star},
                                SKYEVENT_STAR_CONJUNCTION);
    });
}

bool CSkyDiaryEvents::CalcShower(SHOWER* shower) {
    if (shower == nullptr || !state_->model) return false;
    state_->model->SetObserver(&state_->geocentre);
    return state_->fill_shower(*shower);
}

bool CSkyDiaryEvents::SearchNext(CONJUN*) { return false; }

bool CSkyDiaryEvents::ResListReset() {
    state_->cut_back(0);
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
