#include "apps/solsys/targets.h"

#include <fmt/format.h>

#include <optional>

#include "apps/solsys/bodies.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/small_bodies.h"
#include "apps/solsys/star_list.h"
#include "apps/solsys/text.h"
#include "io/orbit_records.h"

namespace app {
namespace {

Target star_target(const StarRow& row) {
    return named_target(SSO_ID(SSO_STAR, row.hip), star_name(row), star_object(row));
}

Target sample_target(const SampleComet& row) {
    return named_target(SSO_ID(SSO_COMT, row.number), name_of(row.comet),
                        solsys_io::to_record(row.comet));
}

// "astr:4", "comt:1".
std::optional<Target> sample_by_code(const SSO_ID& id) {
    if (id.type == SSO_ASTR)
        if (const auto planet = sample_minor_planet(fmt::format("{}", id.number)))
            return target_of(*planet);
    if (id.type == SSO_COMT)
        if (const auto comet = sample_comet(id.number)) return sample_target(*comet);
    return std::nullopt;
}

std::optional<Target> find_sample(const std::string& text, Utc near) {
    if (const auto planet = sample_minor_planet(text)) return target_of(*planet);
    if (const auto comet = sample_comet(text, near.jd())) return sample_target(*comet);
    return std::nullopt;
}

}  // namespace

Target named_target(const SSO_ID& id, std::string name, Target::Record record) {
    Target target{id, std::move(name), std::move(record)};
    target.id.name[target.name.copy(target.id.name, sizeof target.id.name - 1)] = '\0';
    return target;
}

Target target_of(const solsys_io::MinorPlanet& planet) {
    return named_target(SSO_ID(SSO_ASTR, static_cast<std::int32_t>(planet.number)),
                        name_of(planet), solsys_io::to_record(planet));
}

Target target_of(const solsys_io::Comet& comet) {
    return named_target(SSO_ID(SSO_COMT, 0), name_of(comet), solsys_io::to_record(comet));
}

Target parse_sample_target(const std::string& text, Utc near) {
    if (const auto body = find_body(text))
        if (const auto sample = sample_by_code(body->id)) return *sample;
    if (const auto sample = find_sample(text, near)) return *sample;
    throw BadInput(fmt::format(
        "no '{}' in the sample of minor planets and comets: use --file or --elements", text));
}

Target parse_target(const std::string& text, Utc near) {
    const std::optional<Body> body = find_body(text);
    if (body && body->id.type != SSO_STAR) {
        if (const auto sample = sample_by_code(body->id)) return *sample;
        return named_target(body->id, body->name);
    }
    if (const auto sample = find_sample(text, near)) return *sample;
    if (const StarRow* star = find_star(text)) return star_target(*star);
    if (body || folded(text).starts_with("hip"))
        throw BadInput(fmt::format("no star '{}' in the list of bright stars", text));
    throw BadInput(no_body(text));
}

void add_to(CSWSolSys& model, const Target& target) {
    bool added = false;
    if (const auto* star = std::get_if<StarObject>(&target.record)) {
        added = model.AddStar(target.id, *star);
    } else if (const auto* asteroid = std::get_if<AsteroidRecord>(&target.record)) {
        added = model.AddAsteroid(target.id.number, *asteroid);
    } else if (const auto* comet = std::get_if<CometRecord>(&target.record)) {
        added = model.AddComet(target.id.number, *comet);
    } else if (!model.CheckSSO(&target.id)) {
        throw BadInput(fmt::format("no body '{}' in the catalogue", code_of(target.id)));
    } else {
        return;
    }
    if (!added) throw BadInput(fmt::format("{}: the elements are no orbit", target.name));
}

}  // namespace app
