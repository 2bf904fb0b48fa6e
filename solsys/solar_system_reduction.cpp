// The choice of a reduction, what a host knows of the Earth's rotation, and what the modern
// reduction derives from an instant.
#include <cmath>
#include <vector>

#include "core/answer_or.h"
#include "frames/modern_frame_set.h"
#include "solsys/earth_orientation.h"
#include "solsys/model.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kMostUt1 = 1.0;   // s: what is farther from UTC is no UT1
constexpr double kMostPole = 2.0;  // arcsec

}  // namespace

void CSWSolSys::SetReduction(SolsysReduction reduction) {
    Model& m = *model_;
    const bool modern = reduction == REDUCTION_MODERN;
    if (modern == (m.bodies.modern != nullptr)) return;
    m.bodies.modern = modern ? m.reduction.get() : nullptr;
    if (SS_Object* sun = m.bodies.find(solsys::kSunKey)) sun->KeepOnlyExactInstants(modern);
    m.lunation = {};
    m.reduction_changed();
}

SolsysReduction CSWSolSys::GetReduction() const {
    return model_->bodies.modern != nullptr ? REDUCTION_MODERN : REDUCTION_CLASSIC;
}

void CSWSolSys::Model::reduction_changed() {
    saved_is_stale = has_saved;
    if (current.has_frames) derive_anew();
}

void CSWSolSys::Model::derive_anew() {
    current.has_frames = false;
    update_frames();
    derive_observer();
}

bool CSWSolSys::SetUT1(double ut1MinusUtc) {
    if (!std::isnan(ut1MinusUtc) && !(std::fabs(ut1MinusUtc) <= kMostUt1)) return false;
    auto& value = model_->reduction->earth.ut1_minus_utc;
    value.reset();
    if (!std::isnan(ut1MinusUtc)) value = ut1MinusUtc;
    if (model_->bodies.modern != nullptr) model_->reduction_changed();
    return true;
}

bool CSWSolSys::SetPolarMotion(double x, double y) {
    const bool none = std::isnan(x) && std::isnan(y);
    if (!none && !(std::fabs(x) <= kMostPole && std::fabs(y) <= kMostPole)) return false;
    auto& pole = model_->reduction->earth.pole;
    pole.reset();
    if (!none) pole = solsys::PolarMotion{x * solsys::kArcsec, y * solsys::kArcsec};
    if (model_->bodies.modern != nullptr) model_->reduction_changed();
    return true;
}

EarthOrientationReport CSWSolSys::SetEarthOrientation(const EarthOrientationRow* rows,
                                                      int count) {
    solsys::EarthInputs& earth = model_->reduction->earth;
    const auto size = rows != nullptr && count > 0 ? static_cast<std::size_t>(count) : 0;
    const auto report = solsys::answer_or(EarthOrientationReport{}, [&] {
        return earth.table.set({rows, size}, earth.leap_seconds);
    });
    if (model_->bodies.modern != nullptr) model_->reduction_changed();
    return report;
}

EarthOrientationSource CSWSolSys::GetEarthOrientation(EarthOrientationRow* row) const {
    const Model& m = *model_;
    const solsys::EarthTurn turn = solsys::earth_turn_at(m.reduction->earth, m.current.now);
    if (row != nullptr) {
        *row = {solsys::mjd_of(m.reduction->earth.leap_seconds.utc_from_tt(m.current.now)),
                turn.ut1_minus_utc, turn.pole.x / solsys::kArcsec,
                turn.pole.y / solsys::kArcsec};
    }
    return turn.source;
}

bool CSWSolSys::SetLeapSeconds(const LeapSecond* rows, int count, double validUntil) {
    if (rows == nullptr || count <= 0) return false;
    const bool taken = solsys::answer_or(false, [&] {
        std::vector<solsys::LeapSecondRow> table;
        table.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            table.push_back({rows[i].mjd_utc, rows[i].tai_minus_utc});
        return model_->reduction->earth.leap_seconds.replace(table, validUntil);
    });
    if (!taken) return false;
    if (model_->bodies.modern != nullptr) model_->reduction_changed();
    return true;
}

double CSWSolSys::GetSiderealTime(bool apparent) const {
    const Model& m = *model_;
    const solsys::Instant now = m.current.now;
    if (m.bodies.modern == nullptr) return SiderialTime(apparent, now.day, now.fraction);
    const solsys::EarthTurn turn = solsys::earth_turn_at(m.reduction->earth, now);
    return apparent
               ? solsys::greenwich_sidereal_time(turn.ut1, m.current.frames.equation_of_origins)
               : solsys::mean_sidereal_time_2006(turn.ut1, now);
}
