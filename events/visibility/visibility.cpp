// The life of a search and its walk from day to day.
#include "solsys/visibility.h"

#include <algorithm>
#include <cmath>

#include "core/answer_or.h"
#include "core/constants.h"
#include "events/visibility/day_step.h"
#include "events/visibility/state.h"

using solsys::search::is_instant;
using solsys::search::SkyAt;
using solsys::visibility::Day;
using solsys::visibility::Target;

namespace {

bool well_formed(const OBSERVER& observer) {
    return std::all_of(std::begin(observer.location), std::end(observer.location),
                       [](double x) { return std::isfinite(x); });
}

// Whether the model has anything to compute the object from at its instant. Asteroids and
// comets are asked for a place: they may be held or integrated for the host without being in a
// table.
bool may_be_computed(CSWSolSys& model, const SSO_ID& id) {
    double state[3];
    switch (id.type) {
        case SSO_PLNT:
        case SSO_MOON:
        case SSO_SCFT:
        case SSO_USCO:
            return model.CheckSSO(&id);
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
        case SSO_FSCO:
        case SSO_TLE:
            return model.GetVecCentre2K(id, 0, state);
        default:
            return model.GetStar(id) != nullptr;
    }
}

bool orbits_observers_body(const CSWSolSys& model, const SSO_ID& id, const OBSERVER& observer) {
    return (id.type == SSO_FSCO || id.type == SSO_SCFT) &&
           model.GetCentralBodyID(id) == SSO_ID(observer.body_type, observer.body_number);
}

}  // namespace

CSWVisibility::State::State(CSWSolSys* borrowed) : model(borrowed) {
    observer.kind = LOCATION_SURFACE;
    observer.body_type = SSO_PLNT;
    observer.body_number = 3;
    observer.location[0] = 0.1;                 // km
    observer.location[1] = 0.6457718232379019;  // 37 degrees east
    observer.location[2] = 0.9599310885968813;  // 55 degrees north
    if (model.owned()) place_observer();
}

void CSWVisibility::State::place_observer() {
    OBSERVER in_au = observer;
    if (in_au.kind == LOCATION_SURFACE) in_au.location[0] /= solsys::kAuKm;
    model->SetObserver(&in_au);
}

void CSWVisibility::State::take_observer(const OBSERVER* given) {
    if (given != nullptr && well_formed(*given)) observer = *given;
    place_observer();
}

double CSWVisibility::State::height_km() const {
    return observer.kind == LOCATION_SURFACE ? observer.location[0] : 0.0;
}

CSWVisibility::CSWVisibility(CSWSolSys* model) : state_(std::make_unique<State>(model)) {}

CSWVisibility::~CSWVisibility() = default;

void CSWVisibility::InitSearch(double start, double end, SSO_ID id, OBSERVER* observer) {
    State& s = *state_;
    s.id = id;
    s.results.clear();
    s.crossings.clear();
    s.flags = 7;
    s.first_rise_set = true;
    s.span = {};
    if (!s.model) return;
    if (is_instant(start) && is_instant(end)) {
        s.span = solsys::search::span_of_ut(start, end);
        const solsys::Instant t = solsys::search::split(s.span.start);
        s.model->SetTime(t.day, t.fraction, true);
    }
    s.take_observer(observer);
}

bool CSWVisibility::SearchNext(VISIBILITY* day) {
    State& s = *state_;
    if (day == nullptr) return false;
    const auto begin = [&] {
        *day = VISIBILITY{};
        day->type = s.id.type;
        day->number = s.id.number;
    };
    begin();
    if (!s.model || !may_be_computed(*s.model, s.id) ||
        orbits_observers_body(*s.model, s.id, s.observer)) {
        return false;
    }
    s.place_observer();
    SkyAt sky(*s.model);
    const Target target(*s.model, s.id);
    while (!s.span.over()) {
        switch (day_step(sky, target, s.height_km(), s.span.cursor, *day)) {
            case Day::kUp:
                return true;
            case Day::kNotUp:
                break;
            case Day::kUnknown:
                s.span.cursor = solsys::visibility::next_computable(sky, s.span);
                break;
        }
        begin();
    }
    return false;
}

int CSWVisibility::SearchVisibility() {
    State& s = *state_;
    const auto from = s.span.cursor;
    const std::size_t before = s.results.size();
    const bool whole = solsys::answer_or(false, [&] {
        VISIBILITY day;
        while (SearchNext(&day)) {
            if (day.rise != 0 || day.transit != 0 || day.set != 0) s.results.push_back(day);
        }
        return true;
    });
    if (whole) return static_cast<int>(s.results.size());
    s.results.resize(before);
    s.span.cursor = from;
    return -1;
}

const std::vector<VISIBILITY>& CSWVisibility::GetResults() const { return state_->results; }
