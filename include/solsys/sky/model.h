/// \file
/// A model of the solar system to ask: which ephemeris, which site, which instant.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/result.h"
#include "solsys/sky/site.h"
#include "solsys/solar_system.h"

namespace solsys::sky {

/// A handle on a `CSWSolSys`, owned or borrowed, that remembers its site and instant.
///
/// \code
///     auto model = Model::open("de405.bin");   // or Model::open() for the built-in theory
///     if (!model) return complain(model.message());
///     model->observe_from(*find_city("Oslo"));
///     model->move_to(Instant::now());
/// \endcode
///
/// One model belongs to one thread; several may be used from several threads.
class SOLSYS_API Model {
  public:
    /// On a DE file, on a folder with one, or (empty) on the built-in theories. An ephemeris
    /// that cannot be opened is a failure, never a silent fall-back. The modern reduction is in
    /// force, milliarcseconds from what observatories print; see `SolsysReduction`.
    static Result<Model> open(const std::string& ephemeris = {});
    /// Over a host's own model, which must outlive this; its observer and instant stay until
    /// they are set here, and its reduction is its own.
    explicit Model(CSWSolSys& borrowed);
    /// Takes the other's model over; it must not be used any more.
    Model(Model&&) noexcept;
    /// Likewise.
    Model& operator=(Model&&) noexcept;
    ~Model();

    /// The model itself, for everything that this layer does not offer.
    [[nodiscard]] CSWSolSys& classic() const { return *model_; }

    /// Puts the observer at a site.
    void observe_from(const Site& site);
    /// Puts the observer at the Earth's centre.
    void observe_from_earth_centre();
    /// The site, if it is not the Earth's centre.
    [[nodiscard]] const std::optional<Site>& site() const { return site_; }

    /// Moves to an instant. False: nothing can be computed there (the model stays where it
    /// was).
    bool move_to(const Instant& t);
    /// The instant that the model was moved to last.
    [[nodiscard]] const Instant& instant() const { return instant_; }

    /// Makes a body with a record of its own known; others only have to be catalogued.
    [[nodiscard]] Result<bool> add(const Body& body);

    /// Which models of precession, nutation and light everything follows.
    void use(SolsysReduction reduction) { model_->SetReduction(reduction); }
    /// The reduction in use.
    [[nodiscard]] SolsysReduction reduction() const { return model_->GetReduction(); }

    /// What the places come from: "DE file" or "built-in theory".
    [[nodiscard]] std::string source() const;

  private:
    std::unique_ptr<CSWSolSys> own_;
    CSWSolSys* model_;
    std::optional<Site> site_;
    Instant instant_;
};

}  // namespace solsys::sky
