// The stars and deep-sky objects that a host gives to the model.
#include <cmath>

#include "core/answer_or.h"
#include "solsys/kinds.h"
#include "solsys/model.h"
#include "solsys/modern_star.h"
#include "solsys/star_place.h"
#include "solsys/toolkit.h"

bool CSWSolSys::AddStar(const SSO_ID& id, const StarObject& star) {
    const bool in_table = solsys::kind_of(id.type).table == solsys::Table::stars;
    if (!in_table || !std::isfinite(star.ra) || !std::isfinite(star.dec)) return false;
    return solsys::answer_or(false, [&] {
        model_->stars.replace(solsys::key_of(id), star);
        return true;
    });
}

bool CSWSolSys::RemoveStar(const SSO_ID& id) { return model_->stars.erase(solsys::key_of(id)); }

void CSWSolSys::ClearStars() { model_->stars.clear(); }

const StarObject* CSWSolSys::GetStar(const SSO_ID& id) const {
    return std::as_const(model_->stars).find(solsys::key_of(id));
}

namespace {

bool modern_star(const CSWSolSys::Model& m, const StarObject& star, double* angles,
                 double* vector, bool to_date) {
    const solsys::ObserverPlace& place = m.current.observer.place;
    solsys::StarPlace seen =
        solsys::modern_star_place(star, m.bodies.modern->dynamical(m.current.now),
                                  {place.heliocentric.r + place.sun.r, place.velocity_c,
                                   place.lorentz_reciprocal, place.bending});
    if (to_date) seen.vector = m.current.frames.cur_from_j2000 * seen.vector;
    store(seen.vector, vector);
    if (angles != nullptr) {
        psf1(vector, 1.0, angles);
        angles[0] = seen.distance;
    }
    return true;
}

}  // namespace

bool CSWSolSys::GetRADecVisStar(const StarObject* star, double* angles, double* vector,
                                bool toDate) {
    const solsys::ModelInstant& current = model_->current;
    const solsys::ObserverPlace& place = current.observer.place;
    if (star == nullptr || vector == nullptr || !place.known) return false;
    if (model_->bodies.modern != nullptr)
        return modern_star(*model_, *star, angles, vector, toDate);
    const double years = days_since_j2000(current.now) / solsys::kDaysPerJulianYear;
    const solsys::StarObserver observer{place.heliocentric.r, place.velocity_c,
                                        place.lorentz_reciprocal};
    const solsys::StarPlace seen =
        toDate ? star_place(*star, years, observer, current.frames.cur_from_j2000)
               : star_place(*star, years, observer);
    store(seen.vector, vector);
    if (angles != nullptr) {
        psf1(vector, 1.0, angles);
        angles[0] = seen.distance;
    }
    return true;
}
