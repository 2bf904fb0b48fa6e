#include "solsys/earth_satellites.h"

#include "core/answer_or.h"
#include "solsys/model.h"

using solsys::key_of;

bool CSWSolSys::AddSatellite(std::int32_t number, const TLERecord& record) {
    const auto set = solsys::prepared(record);
    if (!set) return false;
    return solsys::answer_or(false, [&] {
        model_->bodies.satellites.replace(
            key_of(SSO_TLE, number),
            std::make_unique<solsys::EarthSatellite>(solsys::EarthSatellite{record, *set}));
        return true;
    });
}

bool CSWSolSys::AddSatellite(std::int32_t number, const char* line1, const char* line2) {
    return solsys::answer_or(false, [&] {
        TLEConvert set;
        return set.Set(line1, line2) == 0 && AddSatellite(number, *set.GetRecord());
    });
}

bool CSWSolSys::RemoveSatellite(std::int32_t number) {
    return model_->bodies.satellites.erase(key_of(SSO_TLE, number));
}

void CSWSolSys::ClearSatellites() { model_->bodies.satellites.clear(); }

const TLERecord* CSWSolSys::GetSatellite(std::int32_t number) const {
    const auto* found = find_satellite(model_->bodies.satellites, key_of(SSO_TLE, number));
    return found != nullptr ? &found->record : nullptr;
}
