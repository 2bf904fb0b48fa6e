// Eclipses, and which of them comes with a phase of the Moon.
#include "events/diary/eclipse_events.h"

#include <algorithm>

#include "events/diary/search.h"
#include "solsys/eclipses.h"

namespace solsys::diary {

namespace {

constexpr double kAround = 1;  // day: greatest eclipse is within hours of the phase

}  // namespace

int eclipse_at(CSWSolSys& model, double phase_tt, bool full) {
    CSWEclipses eclipses(&model);
    eclipses.SetPrecise(true);
    const double ut = search::ut_from_tt(phase_tt);
    eclipses.InitSearch(ut - kAround, ut + kAround);
    ECLIPSE eclipse;
    return eclipses.SearchNext(&eclipse, full ? ECLIPSE_LUNAR : ECLIPSE_SOLAR) ? eclipse.type
                                                                               : 0;
}

bool Diary::find_eclipses() {
    for (const short kind : {ECLIPSE_SOLAR, ECLIPSE_LUNAR}) {
        CSWEclipses eclipses(model.get());
        eclipses.SetPrecise(true);
        eclipses.InitSearch(search::ut_from_tt(span.start), search::ut_from_tt(span.end));
        ECLIPSE eclipse;
        search::Span walk = span;
        while (control.go_on(walk) && eclipses.SearchNext(&eclipse, kind)) {
            const double t = search::tt_from_ut(eclipse.day + eclipse.greatest);
            walk.cursor = std::max(walk.cursor, t);
            if (within(t) &&
                !add(t, kind == ECLIPSE_SOLAR ? SKYEVENT_SOLAR_ECLIPSE : SKYEVENT_LUNAR_ECLIPSE,
                     eclipse))
                return false;
        }
    }
    return !control.stopped();
}

}  // namespace solsys::diary
