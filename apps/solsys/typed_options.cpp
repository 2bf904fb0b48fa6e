#include "apps/solsys/typed_options.h"

#include <csignal>
#include <filesystem>
#include <fstream>

#include "apps/solsys/failure.h"

namespace app {
namespace {

namespace sky = solsys::sky;

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int) { interrupted = 1; }

template <class T>
T value_of(sky::Result<T>&& result) {
    if (!result) throw BadInput(result.message());
    return std::move(*result);
}

}  // namespace

sky::Model open_sky_model(const Options& options) {
    return value_of(sky::Model::open(options.ephemeris));
}

std::optional<sky::Site> typed_site(const Options& options) {
    if (!options.site.empty() && !options.city.empty())
        throw BadInput("--site and --city exclude each other");
    if (!options.site.empty()) return value_of(sky::parse_site(options.site));
    if (!options.city.empty()) return value_of(sky::find_city(options.city));
    return std::nullopt;
}

sky::Zone typed_zone(const Options& options, const std::optional<sky::Site>& site) {
    if (!options.zone.empty()) return value_of(sky::Zone::find(options.zone));
    if (site) {
        const auto zone = sky::Zone::find(site->zone);
        if (zone) return *zone;
    }
    return {};
}

sky::Span typed_span(const Options& options, const sky::Zone& zone, double default_days) {
    const sky::Instant from = options.from.empty()
                                  ? sky::Instant::now()
                                  : value_of(sky::parse_time(options.from, zone));
    const sky::Instant to = options.to.empty() ? from.plus_days(default_days)
                                               : value_of(sky::parse_time(options.to, zone));
    if (!(from < to)) throw BadInput("--to is not after --from");
    return {from, to};
}

std::vector<sky::Body> typed_bodies(const std::vector<std::string>& names,
                                    const sky::Instant& near) {
    std::vector<sky::Body> bodies;
    for (const std::string& name : names)
        bodies.push_back(value_of(sky::find_body(name, near)));
    return bodies;
}

Interruptible::Interruptible()
    : control_([this](double) {
          if (interrupted != 0) control_.stop();
      }) {
    interrupted = 0;
    std::signal(SIGINT, interrupt);
}

Interruptible::~Interruptible() { std::signal(SIGINT, SIG_DFL); }

void write_file(const std::string& path, const std::string& text) {
    std::ofstream file(std::filesystem::path(std::u8string(path.begin(), path.end())),
                       std::ios::binary);
    file << text;
    file.close();
    if (!file) throw BadInput("'" + path + "' cannot be written");
}

}  // namespace app
