// Every passage through an elevation, into the search's list.
#include <array>
#include <cmath>

#include "core/answer_or.h"
#include "events/search/span.h"
#include "events/visibility/crossings.h"
#include "events/visibility/state.h"

int CSWVisibility::SearchCrossings(double elevation, bool upperLimb) {
    using namespace solsys::visibility;
    State& s = *state_;
    s.crossings.clear();
    if (!s.model || !std::isfinite(elevation)) return 0;
    s.place_observer();
    const std::array levels{Level{elevation, upperLimb}};
    const solsys::search::Span whole{s.span.start, s.span.end, s.span.start};
    return solsys::answer_or(-1, [&] {
        const Passings found = level_passings(*s.model, s.id, levels, whole, {});
        s.crossings.reserve(found.list.size());
        for (const Passing& p : found.list)
            s.crossings.push_back({solsys::search::ut_from_tt(p.time), p.azimuth, p.sense});
        return static_cast<int>(s.crossings.size());
    });
}

const std::vector<CROSSING>& CSWVisibility::GetCrossings() const { return state_->crossings; }
