#include "apps/solsys/small_body_options.h"

#include "apps/solsys/failure.h"
#include "solsys/sky/orbits.h"

namespace app {
namespace {

sky::Body body_of_file(const SmallBodyOptions& options, const sky::Instant& near) {
    auto body = sky::find_in_file(*options.file, options.object.value_or(""), near,
                                  [](const std::string& line) { tell(line); });
    if (!body && body.message().starts_with("no '")) throw NothingFound(body.message());
    if (!body && body.message().ends_with("choose one of them"))
        throw BadInput("--object: " + body.message());
    return need(body, "--file");
}

}  // namespace

void add_orbit_options(Command& command, SmallBodyOptions& options) {
    command.text("--file", options.file,
                 "File of orbits: minor planets (MPCORB) or comets, a line each");
    command.text("--object", options.object,
                 "Number, name or designation of the one wanted of the file");
    command.text("--elements", options.elements,
                 "KEY=VALUE,...: epoch, a or q [au], e, i, node, peri [deg, J2000 "
                 "ecliptic], M [deg] or tp, H with G or K, name; times in TT");
}

void add_small_body_options(Command& command, SmallBodyOptions& options) {
    command.words("name", options.names,
                  "Objects of the built-in sample: vesta, 433, halley, \"c/1995 o1\"");
    add_orbit_options(command, options);
}

std::optional<sky::Body> own_orbit_of(const SmallBodyOptions& options,
                                      const sky::Instant& near) {
    if (!options.file && options.object) throw BadInput("--object needs a --file");
    if (options.file && options.elements)
        throw BadInput("--file and --elements exclude each other");
    if (options.file) return body_of_file(options, near);
    if (options.elements) return need(sky::parse_elements(*options.elements), "--elements");
    return std::nullopt;
}

std::vector<sky::Body> small_bodies_of(const SmallBodyOptions& options,
                                       const sky::Instant& near) {
    const int sources =
        (options.names.empty() ? 0 : 1) + (options.file ? 1 : 0) + (options.elements ? 1 : 0);
    if (sources != 1) throw BadInput("give one of: names, --file, --elements");
    if (const auto own = own_orbit_of(options, near)) return {*own};
    std::vector<sky::Body> bodies;
    for (const std::string& name : options.names)
        bodies.push_back(need(sky::find_small_body(name, near)));
    return bodies;
}

}  // namespace app
