// The inside of CSWConjunc.
#pragma once

#include <atomic>
#include <vector>

#include "events/conjunctions/pair.h"
#include "events/search_model.h"
#include "solsys/conjunctions.h"

struct CSWConjunc::State {
    explicit State(CSWSolSys* borrowed) : model(borrowed), owns(borrowed == nullptr) {}

    bool next_of_pair(CONJUN& event);
    bool next_of_group(CONJUN& event);
    [[nodiscard]] bool runs() const { return !stopped && cursor < end; }

    solsys::SearchModel model;
    bool owns;  // the model, were it only one that could not be initialised
    double start = 0, end = 0;
    double cursor = 0;  // where the search goes on [JD, dynamical], as its ends
    std::vector<SSO_ID>* request = nullptr;
    double limit = 0;
    bool ecliptic = false;
    std::vector<CONJUN> results;
    OBSERVER observer;  // the Earth's centre, from InitSearch on
    std::atomic<bool> stopped{false};
};
