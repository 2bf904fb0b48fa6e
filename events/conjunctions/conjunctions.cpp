// The life of a conjunction search.
#include "solsys/conjunctions.h"

#include <cmath>

#include "core/constants.h"
#include "events/conjunctions/state.h"
#include "solsys/platform.h"
#include "solsys/time_scales.h"

CSWConjunc::CSWConjunc(CSWSolSys* model) : state_(std::make_unique<State>(model)) {}

CSWConjunc::~CSWConjunc() {
    PrintDebugString("~CSWConjunc\n");
    if (state_->owns) {
        PrintDebugString("ET_UT::Finish\n");
        if (state_->model) PrintDebugString("delete m_SolSys\n");
    }
    PrintDebugString("ResListReset\n");
    state_->results.clear();
    PrintDebugString("~CSWConjunc return\n");
}

void CSWConjunc::InitSearch(double start, double end, std::vector<SSO_ID>* objects,
                            double limit, bool ecliptic) {
    State& s = *state_;
    s.stopped = false;
    s.observer = OBSERVER{};
    s.observer.body_type = SSO_PLNT;
    s.observer.body_number = 3;
    const double delta_t = ET_UT::Get(0, start) / solsys::kSecondsPerDay;
    s.start = s.cursor = start + delta_t;
    s.end = end + delta_t;
    s.request = objects;
    s.limit = limit;
    s.ecliptic = ecliptic;
    if (s.model) {
        s.model->SetTime(0, s.start, true);
        s.model->SetObserver(&s.observer);
    }
    s.results.clear();
}

bool CSWConjunc::SearchNext(CONJUN* event) {
    State& s = *state_;
    if (event == nullptr || !s.model || s.request == nullptr || !std::isfinite(s.end)) {
        return false;
    }
    CONJUN found;
    const bool any = s.request->size() == 2  ? s.next_of_pair(found)
                     : s.request->size() > 2 ? s.next_of_group(found)
                                             : false;
    if (any) *event = found;
    return any;
}

int CSWConjunc::SearchAll() {
    State& s = *state_;
    if (!s.model) return 0;
    CONJUN event;
    while (SearchNext(&event)) s.results.push_back(event);
    return static_cast<int>(s.results.size());
}

const std::vector<CONJUN>& CSWConjunc::GetResults() const { return state_->results; }

void CSWConjunc::Stop() { state_->stopped = true; }
