// The life of a search and its walk from lunation to lunation.
#include "solsys/eclipses.h"

#include <algorithm>
#include <cmath>

#include "events/eclipses/state.h"

using solsys::eclipses::RadiiChoice;
using solsys::eclipses::ShadowRule;

namespace {

// No ephemeris reaches farther: years -13200 to 17191.
constexpr double kFirstInstant = -3100016;
constexpr double kLastInstant = 8000017;

// Nine tenths of a synodic month, as the series wants it [day].
constexpr double kLunationStep = 26.577529812;

bool is_site(const OBSERVER* observer) {
    return observer != nullptr && observer->kind == LOCATION_SURFACE &&
           observer->body_type == SSO_PLNT && observer->body_number == 3 &&
           std::all_of(std::begin(observer->location), std::end(observer->location),
                       [](double x) { return std::isfinite(x); });
}

}  // namespace

CSWEclipses::CSWEclipses(CSWSolSys* model) : state_(std::make_unique<State>(model)) {}

CSWEclipses::~CSWEclipses() = default;

void CSWEclipses::InitSearch(double start, double end) {
    State& s = *state_;
    s.control.reset();
    s.results.clear();
    s.has_site = false;
    s.span = {};
    s.day = 0;
    s.fraction = 0;
    if (!s.model) return;
    s.span = solsys::search::span_of_ut(start, end);
    s.span.start = s.span.cursor = std::max(s.span.start, kFirstInstant);
    s.span.end = std::min(s.span.end, kLastInstant);
    if (s.span.over()) {
        s.span = {};
        return;
    }
    const solsys::Instant t = solsys::split(s.span.start);
    s.day = t.day;
    s.fraction = t.fraction;
    s.model->SetTime(t.day, t.fraction, true);
    solsys::eclipses::observe_from_geocentre(*s.model);
}

void CSWEclipses::InitSearchForLocation(double start, double end, OBSERVER* observer) {
    InitSearch(start, end);
    state_->has_site = is_site(observer);
    if (state_->has_site) state_->site = *observer;
}

bool CSWEclipses::State::next_by_series(ECLIPSE& eclipse, short kind, CSWEclipses& self) {
    double u = 0, gamma = 0, n = 0;
    if (PossibilityOfEclipse(kind, &day, &fraction, &u, &gamma, &n)) {
        eclipse = ECLIPSE{};
        solsys::eclipses::observe_from_geocentre(*model);
        if (kind == ECLIPSE_LUNAR
                ? self.CircumstanceLunarEclipse(day, fraction, gamma, u, n, &eclipse)
                : self.CircumstanceSolarEclipse(day, fraction, gamma, u, &eclipse)) {
            return true;
        }
    }
    fraction += kLunationStep;
    return false;
}

bool CSWEclipses::SearchNext(ECLIPSE* eclipse, short kind) {
    State& s = *state_;
    if (!s.model || eclipse == nullptr || (kind != ECLIPSE_SOLAR && kind != ECLIPSE_LUNAR))
        return false;
    while (s.day + s.fraction < s.span.end) {
        s.span.cursor = s.day + s.fraction;
        if (!s.control.go_on(s.span)) return false;
        ECLIPSE candidate;
        if (s.precise ? s.next_by_ephemeris(candidate, kind)
                      : s.next_by_series(candidate, kind, *this)) {
            *eclipse = candidate;
            return true;
        }
    }
    s.span.cursor = s.span.end;
    return false;
}

int CSWEclipses::SearchEclipses(short kind) {
    State& s = *state_;
    return s.search([&] {
        ECLIPSE eclipse;
        while (SearchNext(&eclipse, kind) && s.results.add(eclipse, s.control)) {
        }
    });
}

int CSWEclipses::SearchEclipsesForLocation(short kind) {
    State& s = *state_;
    return s.search([&] {
        ECLIPSE eclipse;
        while (s.has_site && SearchNext(&eclipse, kind)) {
            ECLIPSE local;
            if (!CheckForLocation(&eclipse, kind, &local)) continue;
            if (!s.results.add(local, s.control)) break;
        }
    });
}

const std::vector<ECLIPSE>& CSWEclipses::GetResults() const { return state_->results.list(); }
void CSWEclipses::Stop() { state_->control.stop(); }
void CSWEclipses::SetCallback(EclipseCallback* callback) {
    state_->results.set_callback(callback);
}
void CSWEclipses::SetProgressHandler(ProgressHandler handler, void* context) {
    state_->control.on_progress(handler, context);
}

void CSWEclipses::SetPrecise(bool precise) {
    state_->precise = precise;
    SetRadii(precise ? ECLIPSE_RADII_CANON : ECLIPSE_RADII_CATALOGUE);
    SetShadow(precise ? ECLIPSE_SHADOW_DANJON : ECLIPSE_SHADOW_SERIES);
}
bool CSWEclipses::IsPrecise() const { return state_->precise; }

void CSWEclipses::SetRadii(short radii) {
    state_->radii =
        radii == ECLIPSE_RADII_CANON ? RadiiChoice::kCanon : RadiiChoice::kCatalogue;
    state_->solar.reset();
    state_->lunar.reset();
}

void CSWEclipses::SetShadow(short shadow) {
    state_->shadow = shadow == ECLIPSE_SHADOW_DANJON     ? ShadowRule::kDanjon
                     : shadow == ECLIPSE_SHADOW_FIFTIETH ? ShadowRule::kFiftieth
                                                         : ShadowRule::kSeries;
    state_->lunar.reset();
}

void CSWEclipses::GetContacts(double contacts[8]) const {
    if (contacts != nullptr) std::copy_n(state_->contacts, 8, contacts);
}
