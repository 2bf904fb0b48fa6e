// Leaves a model as it was found.
#pragma once

#include "solsys/observer.h"
#include "solsys/solar_system.h"

namespace solsys::search {

// Puts the model's instant and observer back at the end of the scope; whatever runs in between
// may move both. The host's save slot is left alone as long as what runs in between leaves it
// alone: this does not use it.
class KeepModel {
  public:
    explicit KeepModel(CSWSolSys& model) : model_(model), observer_(model.GetObserver()) {
        model.GetTime(&day_, &fraction_);
    }
    ~KeepModel() {
        model_.SetObserver(&observer_);
        model_.UpdateSys(day_, fraction_);
    }
    KeepModel(const KeepModel&) = delete;
    KeepModel& operator=(const KeepModel&) = delete;

  private:
    CSWSolSys& model_;
    OBSERVER observer_;
    int day_ = 0;
    double fraction_ = 0;
};

}  // namespace solsys::search
