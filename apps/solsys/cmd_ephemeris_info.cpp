// solsys ephemeris-info: what a DE file holds.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/civil_time.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "solsys/de_ephemeris.h"

namespace app {
namespace {

void run(const std::string& path, const Options& options) {
    const auto header = DE_Ephemeris::readHeader(path.c_str());
    if (!header) throw BadInput(fmt::format("'{}' is no DE ephemeris file", path));
    Report report({{"path", "File", nullptr},
                   {"de_number", "DE", nullptr},
                   {"start_jd", "From JD", fixed(1)},
                   {"start_date", "Date", nullptr},
                   {"end_jd", "To JD", fixed(1)},
                   {"end_date", "Date", nullptr},
                   {"record_days", "Record days", fixed(0)},
                   {"doubles_per_record", "Doubles", nullptr},
                   {"au_km", "au km", fixed(4)},
                   {"earth_moon_mass_ratio", "Earth/Moon", fixed(6)},
                   {"constants", "Constants", nullptr}});
    const auto date = [](double jd) { return iso_utc(utc_from_jd(jd)).substr(0, 10); };
    report.add({path, static_cast<long long>(header->de_number), header->start_jd,
                date(header->start_jd), header->end_jd, date(header->end_jd), header->span,
                static_cast<long long>(header->ncoeff), header->au_km, header->emrat,
                static_cast<long long>(header->ncon)});
    report.print(options.format());
}

}  // namespace

void add_ephemeris_info(CLI::App& main) {
    auto options = std::make_shared<Options>();
    auto path = std::make_shared<std::string>();
    CLI::App* command = main.add_subcommand("ephemeris-info", "What a DE ephemeris file holds");
    command->add_option("path", *path, "A DE ephemeris file")->required();
    add_output_options(*command, *options);
    command->footer("Example:\n  solsys ephemeris-info de405.bin");
    command->callback([options, path] { run(*path, *options); });
}

}  // namespace app
