/// \file
/// Many instants, bodies and sites in one call, into the caller's arrays.
///
/// \code
///     std::vector<Instant> nights(100'000);
///     std::vector<Place> places(bodies.size() * nights.size());
///     const auto done = apparent_places(*model, bodies, nights, places);
///     if (!done) return complain(done.message());
///     const Place& third_night_of_first_body = places[0 * nights.size() + 2];
/// \endcode
///
/// The numbers are those of the single calls to rounding, for the model's observer, ephemeris
/// and reduction. What every body needs of an instant (frames, observer, Sun) is made once.
///
/// Order: bodies, within a body instants: `out[body * instants.size() + instant]`, before that,
/// where there are sites, sites. Instants may come in any order; neighbours next to each other
/// cost least. Where something cannot be computed (outside the ephemeris, mostly) all its
/// numbers are NaN.
///
/// Answers how many could be computed, or a Failure: an output of another size than the
/// product of the inputs', a body that is in no catalogue, elements that are no orbit. Nothing
/// is written then. No memory is taken per instant; the model's own instant and site come back.
/// A model belongs to one thread; several may compute parts of one output at the same time.
///
/// A call that takes a `SearchControl` may be watched and stopped from another thread, as a
/// search may (search.h): what is not done by then is NaN, and the call answers how many were.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"
#include "solsys/sky/places.h"
#include "solsys/sky/result.h"
#include "solsys/sky/search.h"
#include "solsys/sky/site.h"

namespace solsys::sky {

/// Position [au] and velocity [au/day].
using StateVector = std::array<double, 6>;

/// Straight from the DE file that the process has open: bodies 1 Mercury, 2 Venus, 3 Earth,
/// 4 Mars, 5 Jupiter, 6 Saturn, 7 Uranus, 8 Neptune, 9 Pluto (heliocentric), 10 Moon
/// (geocentric), 11 Sun (barycentric), geometric, axes of the file. The instants are taken as
/// TDB by their dynamical time, day and fraction apart.
///
/// A Failure without an open file and for other numbers.
SOLSYS_API Result<std::size_t> file_states(int body, std::span<const Instant> instants,
                                           std::span<StateVector> out);

/// As `heliocentric_state`. Stars: NaN.
SOLSYS_API Result<std::size_t> heliocentric_states(Model& model, std::span<const Body> bodies,
                                                   std::span<const Instant> instants,
                                                   std::span<StateVector> out,
                                                   SearchControl* control = nullptr);
/// As `apparent_place`.
SOLSYS_API Result<std::size_t> apparent_places(Model& model, std::span<const Body> bodies,
                                               std::span<const Instant> instants,
                                               std::span<Place> out,
                                               SearchControl* control = nullptr);
/// As `astrometric_place`.
SOLSYS_API Result<std::size_t> astrometric_places(Model& model, std::span<const Body> bodies,
                                                  std::span<const Instant> instants,
                                                  std::span<Place> out,
                                                  SearchControl* control = nullptr);
/// As `horizontal_of` the apparent place as seen from each site, which need not be the model's:
/// `out[(site * bodies.size() + body) * instants.size() + instant]`.
SOLSYS_API Result<std::size_t> horizontals(Model& model, std::span<const Site> sites,
                                           std::span<const Body> bodies,
                                           std::span<const Instant> instants,
                                           std::span<Horizontal> out,
                                           SearchControl* control = nullptr);
/// As the magnitude of `appearance_of`.
SOLSYS_API Result<std::size_t> magnitudes(Model& model, std::span<const Body> bodies,
                                          std::span<const Instant> instants,
                                          std::span<double> out,
                                          SearchControl* control = nullptr);
/// The constellations of apparent places, `Constellation::index`: -1 for a place that is NaN.
/// `places` are one or several rows, each of a place per instant, as `apparent_places` fills
/// them.
SOLSYS_API Result<std::size_t> constellations(Model& model, std::span<const Instant> instants,
                                              std::span<const Place> places,
                                              std::span<std::int8_t> out,
                                              SearchControl* control = nullptr);
/// The angles between directions on one equator [deg], pair by pair; a single place on either
/// side goes with all of the other. NaN with a place that is NaN.
SOLSYS_API Result<std::size_t> separations(std::span<const Place> first,
                                           std::span<const Place> second,
                                           std::span<double> out);

}  // namespace solsys::sky
