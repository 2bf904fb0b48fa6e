// The model that a search works on: the host's, or one of its own.
#pragma once

#include <memory>

#include "solsys/solar_system.h"

namespace solsys::search {

// Borrows the model given; given none, makes one on the ephemeris of the default place. Keeps
// Delta T available for its life. Without a model (its own could not be initialised, which a
// debug text tells) every operation of the search answers empty.
class SearchModel {
  public:
    explicit SearchModel(CSWSolSys* borrowed);
    ~SearchModel();
    SearchModel(const SearchModel&) = delete;
    SearchModel& operator=(const SearchModel&) = delete;

    [[nodiscard]] CSWSolSys* get() const { return model_; }
    [[nodiscard]] bool owned() const { return own_ != nullptr; }
    explicit operator bool() const { return model_ != nullptr; }
    CSWSolSys* operator->() const { return model_; }
    CSWSolSys& operator*() const { return *model_; }

  private:
    std::unique_ptr<CSWSolSys> own_;
    CSWSolSys* model_;
};

}  // namespace solsys::search
