// solsys ephemeris-info: what a DE file holds.
#include <fmt/format.h>

#include <filesystem>
#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/picture.h"
#include "solsys/de_ephemeris.h"

namespace app {
namespace {

struct SourceRow {
    std::string path;
    const DEHeader* header;
};

std::string date(double jd) {
    return sky::to_string(sky::Zone().date(sky::Instant::from_tt(jd)));
}

void run(const std::string& path, const Options& options) {
    if (path.empty()) throw BadInput("the path is empty");
    std::error_code error;
    if (!std::filesystem::exists(path_of(path), error))
        throw BadInput(fmt::format("'{}' does not exist", path));
    const auto header = DE_Ephemeris::readHeader(path.c_str());
    if (!header) throw BadInput(fmt::format("'{}' is no DE ephemeris file", path));
    const auto whole = [](std::int32_t value) { return Cell(static_cast<long long>(value)); };
    Table<SourceRow> table(
        options.format(),
        {{"path", "", nullptr, [](const SourceRow& r) { return Cell(r.path); }},
         {"", "File", nullptr,
          [](const SourceRow& r) {
              return Cell(r.path.substr(r.path.find_last_of("/\\") + 1));
          }},
         {"de_number", "DE", nullptr,
          [&](const SourceRow& r) { return whole(r.header->de_number); }},
         {"start_jd", "", nullptr, [](const SourceRow& r) { return r.header->start_jd; }},
         {"start_date", "From", nullptr,
          [](const SourceRow& r) { return Cell(date(r.header->start_jd)); }},
         {"end_jd", "", nullptr, [](const SourceRow& r) { return r.header->end_jd; }},
         {"end_date", "To", nullptr,
          [](const SourceRow& r) { return Cell(date(r.header->end_jd)); }},
         {"record_days", "Days", fixed(0), [](const SourceRow& r) { return r.header->span; }},
         {"doubles_per_record", "Doubles", nullptr,
          [&](const SourceRow& r) { return whole(r.header->ncoeff); }},
         {"au_km", "au km", fixed(4), [](const SourceRow& r) { return r.header->au_km; }},
         {"earth_moon_mass_ratio", "Earth/Moon", fixed(6),
          [](const SourceRow& r) { return r.header->emrat; }},
         {"constants", "Constants", nullptr,
          [&](const SourceRow& r) { return whole(r.header->ncon); }}});
    table.add({path, header.get()});
    table.finish();
}

}  // namespace

void add_ephemeris_info(CommandLine& main) {
    auto options = std::make_shared<Options>();
    auto path = std::make_shared<std::string>();
    Command command = main.add("ephemeris-info", "What a DE ephemeris file holds");
    command.word("path", *path, "A DE ephemeris file");
    add_output_options(command, *options);
    command.footer("Example:\n  solsys ephemeris-info de405.bin");
    command.run([options, path] { run(*path, *options); });
}

}  // namespace app
