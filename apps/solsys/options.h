// Options that several subcommands share.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/solsys/civil_time.h"
#include "apps/solsys/report.h"
#include "apps/solsys/site.h"
#include "apps/solsys/zone.h"
#include "solsys/sky/refraction.h"
#include "solsys/solar_system.h"

namespace app {

struct Options {
    std::string time;
    std::string from, to, step = "1d";
    std::string site, city;
    std::string zone;
    std::string ephemeris;
    std::string reduction = "modern";
    std::optional<double> dut1;
    std::string earth_orientation;
    std::string refraction = "none";
    bool json = false;
    bool csv = false;

    [[nodiscard]] Format format() const;
};

void add_output_options(CLI::App& command, Options& options);
void add_instant_options(CLI::App& command, Options& options);
void add_span_options(CLI::App& command, Options& options);
void add_site_options(CLI::App& command, Options& options);
void add_ephemeris_option(CLI::App& command, Options& options);

// The site asked for, if any. Throws BadInput when both a site and a city are given.
std::optional<Site> chosen_site(const Options& options);
// The zone to show times in: --tz, else the site's where the system knows it, else UTC.
Zone chosen_zone(const Options& options, const std::optional<Site>& site);

// The instants asked for: one (--time, default now), or from --from to --to by --step.
std::vector<Utc> chosen_instants(const Options& options);
// A span: --from (default now) to --to (default that plus `default_days`).
struct Span {
    Utc from, to;
};
Span chosen_span(const Options& options, double default_days);

// Initialises the model on the ephemeris asked for, or on the built-in theory. Throws BadInput
// for an ephemeris that is none.
void open_model(CSWSolSys& model, const Options& options);

// What is known of the air over a site: nothing for "none", no conditions for "standard", else
// "P_HPA,T_C[,HUMIDITY[,WAVELENGTH_UM]]". Throws BadInput for what is none of these.
struct Refraction {
    bool wanted = false;
    std::optional<solsys::sky::Atmosphere> air;
};
Refraction chosen_refraction(const Options& options, const std::optional<Site>& site);
void add_refraction_option(CLI::App& command, Options& options);

// Puts the observer at the site, or at the Earth's centre.
void place_observer(CSWSolSys& model, const std::optional<Site>& site);

}  // namespace app
