// Angles and times in sexagesimal parts.
#include <cmath>
#include <cstdint>

#include "core/constants.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kLargestRadians = 1e306;

enum Mode : short { kUnsigned = 0, kLongitude = 1, kLatitude = 2, kHours = 3, kClock = 4 };

struct Signed {
    double value;
    char sign;
};

// The magnitude that a mode shows for an angle in (-360, 360) degrees, and its sign.
Signed shown(double degrees, short mode) {
    switch (mode) {
        case kLongitude: {
            if (degrees > 180) degrees -= 360;
            if (degrees < -180) degrees += 360;
            return {std::fabs(degrees), degrees > 0 ? '+' : '-'};
        }
        case kLatitude: {
            const double magnitude = std::fabs(degrees);
            const bool beyond_pole = magnitude > 90 && magnitude < 180;
            return {beyond_pole ? 180 - magnitude : magnitude, degrees < 0 ? '-' : '+'};
        }
        case kHours:
        case kClock: {
            double hours = degrees / 15 + (degrees < 0 ? 24 : 0);
            if (mode == kHours) return {hours, '+'};
            if (hours > 12) return {hours - 12, 'p'};
            return {hours, 'a'};
        }
        default:
            return {degrees < 0 ? degrees + 360 : degrees, '+'};
    }
}

}  // namespace

char GMS2Rad(const GMSAngle* record, double* radians, short mode) {
    double value = (record->seconds / 60.0 + record->minutes) / 60.0 + record->degrees;
    if (record->sign == '-') value = -value;
    if (mode == kClock) {
        if (record->degrees == 12) value -= 12;
        if (record->sign == 'p') value += 12;
    }
    if (mode == kHours || mode == kClock) value *= 15;
    *radians = value * solsys::kDegree;
    return record->sign;
}

int Rad2GMS(double radians, GMSAngle* record, short mode) {
    if (!std::isfinite(radians)) {
        *record = {0, 0, 0.0F, '+'};
        return 0;
    }
    // What would overflow in degrees is brought into a turn before.
    if (std::fabs(radians) > kLargestRadians) radians = std::fmod(radians, solsys::kTwoPi);
    const Signed angle = shown(std::fmod(radians * solsys::kDegreesPerRadian, 360), mode);

    const double value = angle.value + 5e-8;  // so that whole seconds are not cut to 59.99...
    auto degrees = static_cast<std::int16_t>(value);
    auto minutes = static_cast<std::int16_t>((value - degrees) * 60);
    auto seconds = static_cast<float>(((value - degrees) * 60 - minutes) * 60);
    if (seconds > 59.99) {
        seconds = 0;
        if (++minutes > 59) {
            minutes = 0;
            ++degrees;
        }
    }
    const bool unsigned_degrees = mode < kLongitude || mode > kClock;
    if (unsigned_degrees && degrees > 359) degrees = 0;
    *record = {degrees, minutes, seconds, angle.sign};
    return 0;
}

void Round_DMS(GMSAngle* record) {
    record->seconds = static_cast<float>(Round_LDouble(record->seconds));
    if (record->seconds > 59) {
        record->seconds = 0;
        if (++record->minutes >= 60) {
            record->minutes = 0;
            ++record->degrees;
        }
    }
}
