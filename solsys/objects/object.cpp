// What all objects share: the catalogue's figures and the caches.
#include <algorithm>
#include <cmath>

#include "ephemeris/planet_states.h"
#include "solsys/integrator.h"
#include "solsys/ss_object.h"

namespace {

// A state serves instants up to 1 ms from its own [day].
constexpr double kCacheTolerance = 1.1574074074074074e-08;

int size_of(bool velocity) { return velocity ? 6 : 3; }

// No number at all survives in a product with zero but a finite one.
bool finite(const double* state, int size) {
    double zero = 0.0;
    for (int i = 0; i < size; ++i) zero += 0.0 * state[i];
    return zero == 0.0;
}

}  // namespace

SS_Object::SS_Object(const SS_BodyData& data, SS_Object* parent)
    : number_(data.number),
      radius_km_(data.radius_km),
      orbital_period_(data.orbital_period),
      rotation_period_(data.rotation_period),
      flattening_(data.flattening),
      gm_(data.gm),
      magnitude_(data.magnitude),
      reserved_(data.reserved),
      rotation_(data.rotation),
      parent_(parent),
      root_(parent != nullptr ? parent->root_ : this) {}

SS_Object::~SS_Object() = default;

void SS_Object::SetRotationFunction(RotationElementsFn rotation) {
    rotation_ = rotation;
    rotation_cache_.valid = false;
}

void SS_Object::SetMagnitudeFunction(MagnitudeFn magnitude) { magnitude_ = magnitude; }

bool SS_Object::GetRotationElements(int day, double fraction, double* ra, double* dec,
                                    double* w) {
    KeptRotation& kept = rotation_cache_;
    if (!kept.valid || kept.day != day || kept.fraction != fraction) {
        kept = {};
        kept.known = rotation_ != nullptr &&
                     rotation_(day, fraction, number_, &kept.ra, &kept.dec, &kept.w);
        kept.valid = true;
        kept.day = day;
        kept.fraction = fraction;
    }
    *ra = kept.ra, *dec = kept.dec, *w = kept.w;
    return kept.known;
}

int SS_Object::GetState(int day, double fraction, bool velocity, double* out) {
    double heliocentric[6];
    if (ComputeState(day, fraction, velocity, heliocentric) != SS_OK) return SS_UNKNOWN;
    std::copy_n(relative_, size_of(velocity), out);
    return SS_OK;
}

double SS_Object::GetParentGM() const { return -1.0; }

void SS_Object::AttachIntegrator(Integrator* /*integrator*/) {}

Integrator* SS_Object::GetIntegrator() const { return nullptr; }

std::uint32_t SS_Object::SourceChanges() const {
    return root_->source_changes_ + solsys::de_file_changes();
}

void SS_Object::SourceChanged() { ++root_->source_changes_; }

bool SS_Object::Cached(int day, double fraction, bool velocity) const {
    const double tolerance = root_->only_exact_instants_ ? 0.0 : kCacheTolerance;
    return std::fabs(cached_time_ - (day + fraction)) <= tolerance &&
           cached_level_ >= (velocity ? 1 : 0) && cached_source_ == SourceChanges();
}

int SS_Object::Keep(int day, double fraction, bool velocity, const double* heliocentric,
                    const double* relative, double* out) {
    const int size = size_of(velocity);
    const bool of_sun = relative == heliocentric;  // its parent is the origin
    if (!finite(heliocentric, size) || !(of_sun || finite(relative, size))) return SS_UNKNOWN;
    std::copy_n(heliocentric, size, heliocentric_);
    std::copy_n(relative, size, relative_);
    cached_time_ = day + fraction;
    cached_level_ = velocity ? 1 : 0;
    cached_source_ = SourceChanges();
    return CopyCached(velocity, out);
}

int SS_Object::CopyCached(bool velocity, double* out) const {
    std::copy_n(heliocentric_, size_of(velocity), out);
    return SS_OK;
}
