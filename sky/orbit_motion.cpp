#include <cmath>

#include "solsys/sky/orbits.h"

namespace solsys::sky {

Result<bool> integrate(Model& model, const Body& body, bool integrated) {
    if (!body.has_elements()) return Failure{body.name + " has no orbital elements"};
    if (const auto added = model.add(body); !added) return added;
    if (!model.classic().SetIntegrated(body.id, integrated) && integrated)
        return Failure{body.name + " cannot be integrated"};
    return true;
}

bool is_integrated(const Model& model, const Body& body) {
    return model.classic().IsIntegrated(body.id);
}

std::optional<double> elements_uncertainty_arcsec(const Body& body, const Instant& t,
                                                  bool integrated) {
    if (!body.has_elements()) return std::nullopt;
    const double years = (t.jd_tt() - body.elements_epoch) / 365.25;
    const double square = years * years;
    const bool comet = body.id.type == SSO_COMT;
    if (integrated) return comet ? 1 + 10 * square : 0.1 + 0.01 * square;
    return 150 * square / (comet ? 1 : std::hypot(1, years / 9));
}

}  // namespace solsys::sky
