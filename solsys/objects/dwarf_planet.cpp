#include <cmath>
#include <initializer_list>

#include "core/constants.h"
#include "core/linalg.h"
#include "ephemeris/planet_states.h"
#include "solsys/dwarf_elements.h"
#include "solsys/integrator.h"
#include "solsys/ss_object.h"
#include "solsys/sso_id.h"

namespace {

constexpr double kFirstStep = 0.015;  // of an attached integrator [day]

// The J2000 ecliptic of the elements to the equator.
constexpr solsys::Mat3 kEquatorFromEcliptic =
    solsys::rotation_x(solsys::kCosObliquityOfElements, -solsys::kSinObliquityOfElements);

// The reader of a library that has no catalogue beside it.
class EmptyReader final : public DwarfPlanetsIO {
  public:
    bool Read(std::int32_t /*type*/, std::int32_t /*number*/, Elements* /*elements*/) override {
        return false;
    }
};

DwarfPlanetsIO* installed_reader = nullptr;

bool is_ellipse(const Elements& e) {
    for (const double x : {e.q, e.i, e.node, e.peri, e.n, e.M, e.epochFraction})
        if (!std::isfinite(x)) return false;
    return e.q > 0 && e.e >= 0 && e.e < 1;
}

}  // namespace

DwarfPlanetsIO::~DwarfPlanetsIO() = default;

DwarfPlanetsIO* GetReader() {
    static EmptyReader empty;
    return installed_reader != nullptr ? installed_reader : &empty;
}

void SetReader(DwarfPlanetsIO* reader) { installed_reader = reader; }

SS_DwarfPlanetObject::SS_DwarfPlanetObject(const SS_BodyData& data, SS_Object* parent,
                                           DE_EvalState* ephemeris)
    : SS_PlanetObject(data, parent, ephemeris) {
    SS_DwarfPlanetObject::SetElements();
}

SS_DwarfPlanetObject::~SS_DwarfPlanetObject() { delete integrator_; }

bool SS_DwarfPlanetObject::SetElements() {
    SourceChanged();
    has_elements_ = solsys::dwarf_planet_elements(number_, &elements_);

    Elements read{};
    if (!GetReader()->Read(SSO_PLNT, number_, &read) || !is_ellipse(read)) return false;
    if (read.n == 0) read.n = std::sqrt(solsys::kSunGm / read.q) / read.q;
    elements_ = read;
    has_elements_ = true;
    return true;
}

bool SS_DwarfPlanetObject::StateFromElements(double mu, int day, double fraction, bool velocity,
                                             double* out) const {
    if (!has_elements_) return false;
    double r[3];
    double v[3] = {};
    if (!Kepler(velocity ? 1 : 0, mu, day, fraction, elements_, r, v)) return false;
    store(kEquatorFromEcliptic * solsys::State{solsys::load(r), solsys::load(v)}, out);
    return true;
}

int SS_DwarfPlanetObject::ComputeState(int day, double fraction, bool velocity, double* out) {
    if (Cached(day, fraction, velocity)) return CopyCached(velocity, out);

    double state[6] = {};
    if (integrator_ != nullptr) {
        ++integrations_;
        if (integrator_->IntegrateTo(day, fraction, state))
            return Keep(day, fraction, true, state, state, out);
    }
    if (number_ == solsys::kPlutoNumber)
        return SS_PlanetObject::ComputeState(day, fraction, velocity, out);
    // The mean motion of the elements is fitted to the true motion: the velocity is to go with
    // it, and not with the Sun's GM.
    const double mu = elements_.n * elements_.n * elements_.q * elements_.q * elements_.q;
    if (!StateFromElements(mu, day, fraction, velocity, state)) return SS_UNKNOWN;
    return Keep(day, fraction, velocity, state, state, out);
}

void SS_DwarfPlanetObject::AttachIntegrator(Integrator* integrator) {
    if (integrator == integrator_) return;
    delete integrator_;
    integrator_ = integrator;
    SourceChanged();
    if (integrator_ == nullptr) return;

    if (auto* own = dynamic_cast<IntegRA15*>(integrator_)) {
        own->Init(12, 3, 2);
        own->SetSteps(kFirstStep, kFirstStep);
    }
    double state[6];
    const int day = elements_.epochDay;
    const double fraction = elements_.epochFraction;
    if (!StateFromElements(solsys::kSunGm, day, fraction, true, state) ||
        !integrator_->Start(day, fraction, state)) {
        delete integrator_;
        integrator_ = nullptr;
    }
}

Integrator* SS_DwarfPlanetObject::GetIntegrator() const { return integrator_; }
