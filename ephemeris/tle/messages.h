// Orbit mean-elements messages (CCSDS 502.0-B) as JSON and as CSV.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "ephemeris/tle/set_sink.h"

namespace solsys {

// The keys that mean something here. The first ten must be there.
enum class OmmKey : int {
    epoch,
    mean_motion,
    eccentricity,
    inclination,
    node,
    perigee,
    anomaly,
    bstar,
    number,
    mean_motion_dot,
    mean_motion_ddot,
    ephemeris_type,
    classification,
    set_number,
    revolution,
    name,
    designator,
    centre,
    frame,
    time_system,
    theory
};
constexpr int kOmmKeys = 21;

// The values of one message as they are written.
class OmmFields {
  public:
    // Other keys are skipped; a value without text (null) counts as missing.
    void set(std::string_view key, std::optional<std::string> value);
    [[nodiscard]] const std::optional<std::string>& operator[](OmmKey key) const {
        return values_[static_cast<std::size_t>(key)];
    }

  private:
    std::array<std::optional<std::string>, kOmmKeys> values_;
};

// The record of a message, or its first fault (TLE_FAULT_KEY, with the key).
TLEFault read_message(const OmmFields& fields, TLERecord& record);

void read_json(std::string_view text, SetSink& sink);
void read_csv(std::string_view text, SetSink& sink);

}  // namespace solsys
