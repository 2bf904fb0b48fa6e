// The inside of CSWConjunc.
#pragma once

#include <vector>

#include "events/conjunctions/pair.h"
#include "events/search/control.h"
#include "events/search/search_model.h"
#include "events/search/span.h"
#include "solsys/conjunctions.h"

struct CSWConjunc::State {
    explicit State(CSWSolSys* borrowed) : model(borrowed), owns(borrowed == nullptr) {}

    bool next(CONJUN& event) {
        return request->size() == 2 ? next_of_pair(event) : next_of_group(event);
    }
    bool next_of_pair(CONJUN& event);
    bool next_of_group(CONJUN& event);

    solsys::search::SearchModel model;
    bool owns;  // the model, were it only one that could not be initialised
    solsys::search::Span span;
    solsys::search::Control control;
    std::vector<SSO_ID>* request = nullptr;
    double limit = 0;
    bool ecliptic = false;
    std::vector<CONJUN> results;
    OBSERVER observer;  // the Earth's centre, from InitSearch on
};
