// The shared options as values of the typed layer.
#pragma once

#include <optional>

#include "apps/solsys/options.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"
#include "solsys/sky/zone.h"

namespace app {

// Each throws BadInput with what is wrong.
solsys::sky::Model open_sky_model(const Options& options);
std::optional<solsys::sky::Site> typed_site(const Options& options);
solsys::sky::Zone typed_zone(const Options& options,
                             const std::optional<solsys::sky::Site>& site);
// --from (default now) to --to (default that plus so many days).
solsys::sky::Span typed_span(const Options& options, const solsys::sky::Zone& zone,
                             double default_days);
std::vector<solsys::sky::Body> typed_bodies(const std::vector<std::string>& names,
                                            const solsys::sky::Instant& near);

// A search that Ctrl-C ends, so that what was found is still printed. One at a time.
class Interruptible {
  public:
    Interruptible();
    ~Interruptible();
    Interruptible(const Interruptible&) = delete;
    Interruptible& operator=(const Interruptible&) = delete;
    [[nodiscard]] solsys::sky::SearchControl* control() { return &control_; }

  private:
    solsys::sky::SearchControl control_;
};

// Writes a whole file; throws BadInput when it cannot be written.
void write_file(const std::string& path, const std::string& text);

}  // namespace app
