// Times as people write and read them, and the library's dynamical instants.
#pragma once

#include <string>

namespace app {

// Universal time as a Julian date, split so that milliseconds survive.
struct Utc {
    int day = 0;
    double fraction = 0;

    [[nodiscard]] double jd() const { return day + fraction; }
};

// Dynamical time (TT).
struct Tt {
    int day = 0;
    double fraction = 0;

    [[nodiscard]] double jd() const { return day + fraction; }
};

Tt tt_from_utc(Utc utc);
Utc utc_from_tt(Tt tt);
Utc utc_from_jd(double jd);
Utc plus_days(Utc utc, double days);
double days_from(Utc start, Utc end);

// "now"; "jd:2451545.0"; or ISO 8601, date alone or with a time to any fraction of a second
// and a zone (none or Z: UTC; +02:00). Years are astronomical (0000 is 1 BC); dates before
// 1582 October 15 are of the Julian calendar. Throws BadInput.
Utc parse_time(const std::string& text);

// A step such as "1d", "6h", "10m", "30s" or a plain number of days [day]. Throws BadInput.
double parse_step(const std::string& text);

// "2026-11-21T18:03:04.567Z".
std::string iso_utc(Utc utc);

}  // namespace app
