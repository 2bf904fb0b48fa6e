// The stars and deep-sky objects that a host gives to the model.
#include <cmath>

#include "solsys/model.h"
#include "solsys/star_place.h"
#include "solsys/toolkit.h"

namespace {

bool in_star_table(std::int32_t type) {
    switch (type) {
        case SSO_STAR:
        case SSO_USTR:
        case SSO_UDSO:
        case SSO_CLST:
        case SSO_NEBU:
        case SSO_GALA:
        case SSO_DSNV:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool CSWSolSys::AddStar(const SSO_ID& id, const StarObject& star) {
    if (!in_star_table(id.type) || !std::isfinite(star.ra) || !std::isfinite(star.dec)) {
        return false;
    }
    model_->stars.replace(solsys::key_of(id), star);
    return true;
}

bool CSWSolSys::RemoveStar(const SSO_ID& id) { return model_->stars.erase(solsys::key_of(id)); }

void CSWSolSys::ClearStars() { model_->stars.clear(); }

const StarObject* CSWSolSys::GetStar(const SSO_ID& id) const {
    return std::as_const(model_->stars).find(solsys::key_of(id));
}

bool CSWSolSys::GetRADecVisStar(const StarObject* star, double* angles, double* vector,
                                bool toDate) {
    const solsys::ModelInstant& current = model_->current;
    const double years = days_since_j2000(current.now) / solsys::kDaysPerJulianYear;
    const solsys::StarObserver observer{current.observer.heliocentric.r,
                                        current.observer.velocity_c,
                                        current.observer.lorentz_reciprocal};
    const solsys::StarPlace place =
        toDate ? star_place(*star, years, observer, current.frames.cur_from_j2000)
               : star_place(*star, years, observer);
    store(place.vector, vector);
    if (angles != nullptr) {
        psf1(vector, 1.0, angles);
        angles[0] = place.distance;
    }
    return true;
}
