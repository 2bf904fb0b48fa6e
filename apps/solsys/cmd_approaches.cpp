// solsys approaches: when minor planets and comets come close to the planets and the Moon.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "solsys/sky/approaches.h"
#include "solsys/sky/orbits.h"

namespace app {
namespace {

namespace sky = solsys::sky;

constexpr double kAuKm = 149597870.7;
constexpr double kDefaultSpan = 36525;  // day

struct Request {
    Options options;
    std::string name, file, object, elements;
    double within_au = 0.1;
    bool two_body = false;
};

template <class T>
T value_of(sky::Result<T> result) {
    if (!result) throw BadInput(result.message());
    return std::move(*result);
}

sky::Body body_of(const Request& request, const sky::Instant& near) {
    const int sources = (request.name.empty() ? 0 : 1) + (request.file.empty() ? 0 : 1) +
                        (request.elements.empty() ? 0 : 1);
    if (sources != 1) throw BadInput("give one of: a name, --file, --elements");
    if (!request.file.empty())
        return value_of(sky::find_in_file(request.file, request.object, near));
    if (!request.elements.empty()) return value_of(sky::parse_elements(request.elements));
    return value_of(sky::find_small_body(request.name, near));
}

void run(const Request& request) {
    const Span asked = chosen_span(request.options, kDefaultSpan);
    const sky::Span span{
        sky::Instant::from_utc(sky::JulianDate{asked.from.day, asked.from.fraction}),
        sky::Instant::from_utc(sky::JulianDate{asked.to.day, asked.to.fraction})};
    const Format format = request.options.format();
    const sky::Body body = body_of(request, span.from);
    sky::Model model = value_of(sky::Model::open(request.options.ephemeris));
    sky::ApproachOptions options;
    options.within_au = request.within_au;
    options.two_body = request.two_body;

    Report report({{"id", "", nullptr},
                   {"name", "Planet", nullptr},
                   {"time_utc", "UTC", nullptr},
                   {"distance_au", "Distance au", fixed(7)},
                   {"distance_km", "km", fixed(0)},
                   {"speed_km_s", "km/s", fixed(3)}});
    for (const sky::Approach& a : value_of(sky::find_approaches(model, body, span, options)))
        report.add({sky::code_of(a.planet.id), a.planet.name, a.time.iso(0), a.distance_au,
                    a.distance_au * kAuKm, a.speed_km_s});
    report.print(format);
    if (report.empty())
        throw NothingFound(fmt::format("{} comes to no planet within {} au in that time",
                                       body.name, request.within_au));
}

}  // namespace

void add_approaches(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "approaches", "When a minor planet or comet comes close to the planets and the Moon");
    command->add_option("name", request->name,
                        "One of the built-in sample: apophis, 433, halley");
    command->add_option("--file", request->file,
                        "File of orbits: minor planets (MPCORB) or comets, a line each");
    command->add_option("--object", request->object,
                        "Number, name or designation of the one wanted of the file");
    command->add_option("--elements", request->elements,
                        "KEY=VALUE,...: as `solsys orbit` takes them");
    command->add_option("--within", request->within_au, "Greatest distance [au] (0.1)");
    command->add_flag("--two-body", request->two_body,
                      "On the osculating orbit alone, not integrated among the planets");
    add_span_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "Distances are between centres, geometric; the orbit is integrated among the planets,\n"
        "the Moon, Ceres, Pallas and Vesta. Without --to a century is searched.\n"
        "Examples:\n"
        "  solsys approaches apophis --from 2017-01-01 --to 2040-01-01\n"
        "  solsys approaches 433 --from 1900-01-01 --within 0.3");
    command->callback([request] { run(*request); });
}

}  // namespace app
