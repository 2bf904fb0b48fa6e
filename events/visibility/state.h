// The inside of CSWVisibility.
#pragma once

#include <cstdint>
#include <vector>

#include "events/search/search_model.h"
#include "events/search/span.h"
#include "solsys/visibility.h"

struct CSWVisibility::State {
    explicit State(CSWSolSys* borrowed);

    // The search's observer to the model.
    void place_observer();
    // Takes an observer over when it is one, and places it.
    void take_observer(const OBSERVER* given);
    // Height of the search's observer above the surface; 0 for one who is not on a surface.
    [[nodiscard]] double height_km() const;

    solsys::search::SearchModel model;
    solsys::search::Span span;  // of the search; its cursor: where the next day is looked for
    std::vector<VISIBILITY> results;
    std::vector<CROSSING> crossings;
    OBSERVER observer;        // the height of a surface observer in km
    SSO_ID id{-1, -1};        // all bits set: none
    std::uint16_t flags = 7;  // for the host's sake
    std::vector<SpherePoint> horizon;
    bool first_rise_set = true;
    double next_rise_set = 0;  // where SearchRiseSet goes on [JD, dynamical]
};
