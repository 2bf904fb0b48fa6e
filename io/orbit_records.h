// Elements as read, turned into the records that the library moves.
#pragma once

#include <cstdint>

#include "io/comets.h"
#include "io/minor_planets.h"
#include "solsys/element_records.h"
#include "solsys/kepler.h"

namespace solsys_io {

// The frame of a record's P and Q vectors: the model's own tables hold the J2000 ecliptic;
// CSWSolSys::GetAsterVecCentre2K takes the J2000 equator.
enum class Plane { ecliptic_j2000, equator_j2000 };

// J2000 ecliptic.
Elements to_elements(const MinorPlanet& planet);
Elements to_elements(const Comet& comet);

// `key` is the record's number, by which the library recognises the object it moved last: give
// distinct objects distinct keys.
tagAster_SPH_5 to_compact(const MinorPlanet& planet, Plane plane, std::uint32_t key);
tagComet_SPH_5 to_compact(const Comet& comet, Plane plane, std::int32_t key);

// For CSWSolSys::AddAsteroid and AddComet. An unknown slope becomes the usual 0.15, an unknown
// K becomes 10.
AsteroidRecord to_record(const MinorPlanet& planet);
CometRecord to_record(const Comet& comet);

}  // namespace solsys_io
