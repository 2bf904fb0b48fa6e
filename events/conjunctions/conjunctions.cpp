// The life of a conjunction search.
#include "solsys/conjunctions.h"

#include "core/answer_or.h"
#include "events/conjunctions/state.h"
#include "solsys/platform.h"

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
    s.control.reset();
    s.observer = OBSERVER{};
    s.observer.body_type = SSO_PLNT;
    s.observer.body_number = 3;
    s.span = {};
    const bool valid = solsys::search::is_instant(start) && solsys::search::is_instant(end);
    if (valid) {
        const double delta_t = solsys::search::delta_t(start);
        s.span = {start + delta_t, end + delta_t, start + delta_t};
    }
    s.request = objects;
    s.limit = limit;
    s.ecliptic = ecliptic;
    if (s.model) {
        if (valid) s.model->SetTime(0, s.span.start, true);
        s.model->SetObserver(&s.observer);
    }
    s.results.clear();
}

bool CSWConjunc::SearchNext(CONJUN* event) {
    State& s = *state_;
    if (event == nullptr || !s.model || s.request == nullptr || s.request->size() < 2) {
        return false;
    }
    CONJUN found;
    const bool any = solsys::answer_or(false, [&] { return s.next(found); });
    if (any) *event = found;
    return any;
}

int CSWConjunc::SearchAll() {
    State& s = *state_;
    if (!s.model) return 0;
    if (s.request == nullptr || s.request->size() < 2)
        return static_cast<int>(s.results.size());
    const solsys::search::Span from = s.span;
    const std::size_t before = s.results.size();
    const bool whole = solsys::answer_or(false, [&] {
        CONJUN event;
        while (s.next(event)) s.results.push_back(event);
        return true;
    });
    if (whole) return static_cast<int>(s.results.size());
    s.results.resize(before);
    s.span = from;
    return -1;
}

const std::vector<CONJUN>& CSWConjunc::GetResults() const { return state_->results; }

void CSWConjunc::Stop() { state_->control.stop(); }

void CSWConjunc::SetProgressHandler(void (*progress)(double fraction, void* context),
                                    void* context) {
    state_->control.on_progress(progress, context);
}
