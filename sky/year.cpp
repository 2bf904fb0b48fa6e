#include "solsys/sky/year.h"

#include <algorithm>

#include "solsys/sky/places.h"

namespace solsys::sky {
namespace {

// Altitudes at even steps; false where the bodies cannot be computed.
bool add_altitudes(Model& model, Night& night, int steps) {
    const double step = night.span.days() / steps;
    const Body bodies[] = {sun(), moon()};
    for (int i = 0; i <= steps; ++i) {
        if (!model.move_to(night.span.from.plus_days(i * step))) return false;
        for (std::vector<double>* const altitudes : {&night.sun, &night.moon}) {
            const auto place = apparent_place(model, bodies[altitudes == &night.sun ? 0 : 1]);
            if (!place) return false;
            altitudes->push_back(horizontal_of(model, *place).altitude_deg);
        }
    }
    return true;
}

}  // namespace

NightsOfYear nights_of_year(Model& model, const Zone& zone, int year, int steps) {
    NightsOfYear result{year, {}, {}};
    if (!model.site()) return result;
    const int first = julian_day_number({year, 1, 1});
    const int last = julian_day_number({year + 1, 1, 1});
    for (int day = first; day < last; ++day) {
        Night night;
        night.date = date_of_julian_day(day);
        night.span = {zone.instant({night.date, 12, 0, 0}),
                      zone.instant({date_of_julian_day(day + 1), 12, 0, 0})};
        night.hours = 24 * night.span.days();
        if (!add_altitudes(model, night, std::max(1, steps))) return {year, {}, {}};
        model.move_to(night.span.from.plus_days(0.5));
        model.classic().PhaseElongation(moon().id, nullptr, &night.moon_illuminated, nullptr,
                                        nullptr, nullptr);
        result.nights.push_back(std::move(night));
    }
    result.phases = principal_phases(
        model, {result.nights.front().span.from, result.nights.back().span.to});
    return result;
}

}  // namespace solsys::sky
