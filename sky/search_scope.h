// What the searches of the typed layer share: the model as it was afterwards, a span in
// dynamical time, and the caller's control as the searches below know it.
#pragma once

#include "events/diary/geocentric_sky.h"
#include "events/search/control.h"
#include "events/search/crossings.h"
#include "events/search/keep_model.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

// The caller's control as the searches below know it, told of a part of the whole search.
class PartOfSearch {
  public:
    // The part from one fraction of the whole to another. Null: nobody watches.
    explicit PartOfSearch(SearchControl* control, double from = 0, double to = 1)
        : asked_(control), from_(from), to_(to) {
        control_.on_progress(&PartOfSearch::step, this);
    }
    PartOfSearch(const PartOfSearch&) = delete;
    PartOfSearch& operator=(const PartOfSearch&) = delete;

    [[nodiscard]] const search::Control& control() const { return control_; }

  private:
    static void step(double fraction, void* self) {
        auto& part = *static_cast<PartOfSearch*>(self);
        if (part.asked_ == nullptr) return;
        part.asked_->tell(part.from_ + (part.to_ - part.from_) * fraction);
        if (part.asked_->stopped()) part.control_.stop();
    }

    search::Control control_;
    SearchControl* asked_;
    double from_, to_;
};

// Searches from the Earth's centre; the observer and the instant of the model come back.
class SearchScope {
  public:
    SearchScope(Model& model, const Span& span, SearchControl* control)
        : keep_(model.classic()),
          part_(control),
          span_{span.from.jd_tt(), span.to.jd_tt(), span.from.jd_tt()},
          sky(model.classic()) {
        model.classic().SetObserver(&centre());
        if (!(span_.end - span_.start < kLongest)) span_.end = span_.start;
    }

    [[nodiscard]] search::Span span() const { return span_; }
    [[nodiscard]] const search::Control& control() const { return part_.control(); }
    [[nodiscard]] bool within(double jd_tt) const {
        return jd_tt >= span_.start && jd_tt < span_.end;
    }

  private:
    // Longer than any ephemeris [day]: nothing is looked for then.
    static constexpr double kLongest = 2e7;

    static const OBSERVER& centre() {
        static const OBSERVER observer = earth_centre();
        return observer;
    }
    search::KeepModel keep_;
    PartOfSearch part_;
    search::Span span_;

  public:
    diary::GeocentricSky sky;
};

inline diary::Target target_of(const Body& body) {
    return {body.id, std::get_if<StarObject>(&body.record)};
}

}  // namespace solsys::sky
