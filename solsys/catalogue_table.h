// The rows of the body catalogue, for the model that builds an object from each.
#pragma once

#include <cstdint>

#include "solsys/body_rotation.h"
#include "solsys/magnitudes.h"

namespace solsys {

struct BodyRow {
    std::int32_t number;
    std::int32_t type;           // 'plnt' or 'moon'
    std::int32_t parent_number;  // of type 'plnt'
    double radius_km;            // equatorial
    double orbital_period;       // day
    double rotation_period;      // day; 0 unknown
    double flattening;
    double gm;  // au^3/day^2; 0 unknown
    MagnitudeFn magnitude;
    RotationElementsFn rotation;
};

constexpr int kBodyCount = 229;
constexpr int kFirstBody = 10;  // the walk starts with the Sun

// The row of a body, or null. Constant time.
const BodyRow* catalogue_row(int number);

// The next body of the walk; -1 after the last one; 0 for a number not in the catalogue.
int next_catalogue_number(int number);

}  // namespace solsys
