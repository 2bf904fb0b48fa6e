// Version, messages, instants and sites.
#include <cmath>

#include "c_api/support.h"
#include "solsys/version.h"

using namespace solsys::c;
namespace sky = solsys::sky;

namespace {

// A date in two parts, in any split.
template <class From>
void from_parts(double day, double fraction, From from, solsys_instant* out) {
    finite(day, "day"), finite(fraction, "fraction");
    if (!(std::fabs(day) + std::fabs(fraction) < kLargestDay))
        refuse(SOLSYS_BAD_ARGUMENT, "day: beyond 2e9 days");
    const double whole = std::floor(day);
    given(out, "out") =
        c_instant(from(sky::JulianDate{static_cast<int>(whole), (day - whole) + fraction}));
}

void put_site(const sky::Site& site, solsys_site* out) {
    solsys_site record{};
    record.latitude_deg = site.latitude_deg;
    record.longitude_deg = site.longitude_deg;
    record.height_m = site.height_m;
    record.above_horizon_m = site.above_horizon_m;
    copy(site.name, record.name);
    copy(site.zone, record.zone);
    copy(site.country, record.country);
    put(record, out);
}

sky::Zone zone_called(const char* name) {
    return name != nullptr ? value_of(sky::Zone::find(name)) : sky::Zone();
}

}  // namespace

int32_t solsys_c_api_version(void) { return SOLSYS_C_API_VERSION; }

const char* solsys_library_version(void) { return SOLSYS_VERSION; }

solsys_status solsys_now(solsys_instant* out) {
    return call([&] { given(out, "out") = c_instant(sky::Instant::now()); });
}

solsys_status solsys_instant_from_utc(double day, double fraction, solsys_instant* out) {
    return call([&] {
        from_parts(
            day, fraction, [](auto date) { return sky::Instant::from_utc(date); }, out);
    });
}

solsys_status solsys_instant_from_tt(double day, double fraction, solsys_instant* out) {
    return call([&] {
        from_parts(
            day, fraction, [](auto date) { return sky::Instant::from_tt(date); }, out);
    });
}

solsys_status solsys_parse_time(const char* time, const char* zone, solsys_instant* out) {
    return call([&] {
        given(out, "out") = c_instant(value_of(
            sky::parse_time(text(time, "text"), zone_called(zone)), SOLSYS_BAD_ARGUMENT));
    });
}

solsys_status solsys_time_text(solsys_instant t, const char* zone, int32_t decimals,
                               char* buffer, size_t size) {
    return call([&] {
        if (decimals < 0 || decimals > 9)
            refuse(SOLSYS_BAD_ARGUMENT, "decimals: 0 to 9 of a second");
        const sky::Instant at = instant(t);
        write(zone != nullptr ? zone_called(zone).iso(at, decimals) : at.iso(decimals), buffer,
              size);
    });
}

solsys_status solsys_terrestrial_time(solsys_instant t, solsys_instant* tt,
                                      double* delta_t_seconds) {
    return call([&] {
        const sky::Instant at = instant(t);
        const sky::JulianDate date = at.tt();
        if (tt != nullptr) *tt = {date.day, date.fraction};
        if (delta_t_seconds != nullptr) *delta_t_seconds = at.delta_t_seconds();
    });
}

solsys_status solsys_find_city(const char* name, solsys_site* out) {
    return call([&] { put_site(value_of(sky::find_city(text(name, "name"))), out); });
}

solsys_status solsys_parse_site(const char* site_text, solsys_site* out) {
    return call([&] {
        put_site(value_of(sky::parse_site(text(site_text, "text")), SOLSYS_BAD_ARGUMENT), out);
    });
}
