// The inside of CSWEclipses.
#pragma once

#include <optional>

#include "core/answer_or.h"
#include "core/instant.h"
#include "events/eclipses/besselian.h"
#include "events/eclipses/ground.h"
#include "events/eclipses/luminaries.h"
#include "events/eclipses/lunar_path.h"
#include "events/eclipses/lunation_series.h"
#include "events/eclipses/solar_path.h"
#include "events/search/control.h"
#include "events/search/results.h"
#include "events/search/search_model.h"
#include "events/search/span.h"
#include "solsys/eclipses.h"

namespace solsys::eclipses {

// The kind of an eclipse near a Julian date, its lunation and its series.
inline void number_eclipse(ECLIPSE& e, double jd, short kind) {
    e.kind = kind;
    e.lunation = EclipseLunation(jd, kind);
    e.saros = EclipseSaros(e.lunation, kind);
}

}  // namespace solsys::eclipses

struct CSWEclipses::State {
    explicit State(CSWSolSys* borrowed) : model(borrowed) {}

    // One lunation forward; each moves the cursor. True when it brought an eclipse.
    bool next_by_series(ECLIPSE& eclipse, short kind, CSWEclipses& self);
    bool next_by_ephemeris(ECLIPSE& eclipse, short kind);
    // Decided by the ephemeris around a syzygy; `u` of the series.
    bool precise_solar(solsys::Instant syzygy, ECLIPSE& eclipse);
    bool precise_lunar(solsys::Instant syzygy, double u, ECLIPSE& eclipse);

    // A search into the list. \return how many it holds; -1, and all as before, where memory
    // ends
    template <class Work>
    int search(Work&& work) {
        const solsys::Instant from{day, fraction};
        const int before = results.count();
        const bool whole = solsys::answer_or(false, [&] { return work(), true; });
        if (whole) return results.count();
        results.cut_back(before);
        day = from.day;
        fraction = from.fraction;
        return -1;
    }

    // The path behind a record, laid when it is not the one of the last call. Null for a record
    // of another kind, or when the ephemeris does not answer.
    const solsys::eclipses::SolarPath* solar_path_of(const ECLIPSE* eclipse);
    const solsys::eclipses::LunarPath* lunar_path_of(const ECLIPSE* eclipse);

    // Elements from the model, as BessEl gives them, in dynamical time.
    bool elements_at(int day, double fraction, BesselElems& elements);
    // The distance of the axis from the Earth's centre as the classic refinement measures it.
    double axis_distance(int day, double fraction);

    [[nodiscard]] solsys::eclipses::Radii shadow_radii() {
        return solsys::eclipses::radii_of(*model, radii);
    }

    solsys::search::SearchModel model;
    solsys::search::Control control;
    solsys::search::Span span;
    solsys::search::Results<ECLIPSE, EclipseCallback, &EclipseCallback::OnEclipse> results;
    int day = 0;  // the cursor [ET]
    double fraction = 0;
    OBSERVER site{};  // of InitSearchForLocation; the height in km
    bool has_site = false;

    bool precise = false;
    solsys::eclipses::RadiiChoice radii = solsys::eclipses::RadiiChoice::kCatalogue;
    solsys::eclipses::ShadowRule shadow = solsys::eclipses::ShadowRule::kSeries;

    solsys::eclipses::Flattening earth{1, 1, 0, 1, 0, 1};  // of BesselianElements
    solsys::Instant greatest{};                            // of the eclipse found last [ET]
    double contacts[8] = {-1, -1, -1, -1, -1, -1, -1, -1};

    std::optional<solsys::eclipses::SolarPath> solar;
    std::optional<solsys::eclipses::LunarPath> lunar;
};
