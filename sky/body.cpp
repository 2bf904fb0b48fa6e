#include "solsys/sky/body.h"

#include <charconv>

#include "sky/small_bodies.h"
#include "sky/stars.h"
#include "sky/text.h"

namespace solsys::sky {
namespace {

struct Named {
    std::int32_t number;
    const char* name;
};
constexpr Named kBodies[] = {
#include "body_names.inc"
};

// Planets and the Sun are numbered to 14, satellites from 301.
SSO_ID id_of(std::int32_t number) { return {number < 100 ? SSO_PLNT : SSO_MOON, number}; }

// "plnt:5".
std::optional<SSO_ID> code_in(std::string_view text) {
    if (text.find(':') != 4) return std::nullopt;
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 5, end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    const char code[5] = {text[0], text[1], text[2], text[3], '\0'};
    return SSO_ID(SSO_TYPE(code), number);
}

std::optional<Body> catalogued(std::string_view text) {
    std::string wanted = folded(text);
    if (wanted.starts_with("the") && wanted != "thebe") wanted.erase(0, 3);
    if (wanted == "luna") wanted = "moon";
    if (wanted == "sol") wanted = "sun";
    for (const Named& named : kBodies)
        if (folded(named.name) == wanted) return Body(id_of(named.number), named.name);
    return std::nullopt;
}

std::optional<Body> sample(std::string_view text, const Instant& near) {
    if (const auto id = code_in(text)) {
        if (id->type == SSO_ASTR) text = text.substr(5);
        if (id->type == SSO_COMT) {
            const auto comet = sample_comet(id->number);
            return comet ? std::optional(body_of(comet->comet, comet->number)) : std::nullopt;
        }
    }
    const std::string name(text);
    if (const auto planet = sample_minor_planet(name)) return body_of(*planet);
    if (const auto comet = sample_comet(name, near.jd_utc()))
        return body_of(comet->comet, comet->number);
    return std::nullopt;
}

Failure no_body(std::string_view text) {
    Suggestions close(text);
    for (const Named& named : kBodies) close.consider(named.name);
    suggest_small_bodies(close);
    suggest_stars(close);
    const std::string perhaps = close.text();
    return {"no body " + in_quotes(text) + ": " +
            (perhaps.empty()
                 ? "use a name such as jupiter, io, sirius or M31, or a code such as "
                   "plnt:5, moon:501 or hip:32349"
                 : perhaps)};
}

}  // namespace

Body::Body(const SSO_ID& body_id, std::string body_name, Record body_record)
    : id(body_id), name(std::move(body_name)), record(body_record) {
    id.name[name.copy(id.name, sizeof id.name - 1)] = '\0';
}

Body::Body(const SSO_ID& body_id) : Body(body_id, name_of(body_id)) {}

Body sun() { return Body(SSO_ID(SSO_PLNT, 10)); }
Body moon() { return Body(SSO_ID(SSO_MOON, 301)); }

Result<Body> find_body(std::string_view name, const Instant& near) {
    if (auto body = catalogued(name)) {
        // A dwarf planet that the sample has too moves by its osculating elements.
        const bool dwarf = body->id.type == SSO_PLNT && body->id.number > 10;
        if (auto small = dwarf ? sample(name, near) : std::nullopt) return *small;
        return *body;
    }
    const auto code = code_in(name);
    if (code && code->type != SSO_STAR && code->type != SSO_ASTR && code->type != SSO_COMT) {
        Body body(*code);
        for (const Named& named : kBodies)
            if (id_of(named.number) == *code) return body;
        return no_body(name);
    }
    if (auto body = sample(name, near)) return *body;
    if (const DeepSkyRow* object = find_deep_sky(name)) return body_of(*object);
    if (const StarRow* star = find_star(name)) return body_of(*star);
    const std::string wanted = folded(name);
    for (const char* const prefix : {"hip", "star:", "hr:", "hd:"})
        if (wanted.starts_with(prefix))
            return Failure{"no star " + in_quotes(name) + " in the list of bright stars"};
    return no_body(name);
}

Result<std::vector<Body>> find_bodies(std::string_view name, const Instant& near) {
    const std::string wanted = folded(name);
    std::vector<Body> bodies;
    if (wanted == "all") bodies = {sun(), moon()};
    if (wanted == "all" || wanted == "planets")
        for (const int number : {1, 2, 4, 5, 6, 7, 8})
            bodies.emplace_back(SSO_ID(SSO_PLNT, number));
    if (wanted == "all") bodies.emplace_back(SSO_ID(SSO_PLNT, 9));
    if (!bodies.empty()) return bodies;
    const auto body = find_body(name, near);
    if (!body) return Failure{body.message()};
    return std::vector<Body>{*body};
}

Result<Body> find_small_body(std::string_view name, const Instant& near) {
    if (auto body = sample(name, near)) return *body;
    Suggestions close(name);
    suggest_small_bodies(close);
    const std::string perhaps = close.text();
    return Failure{"no " + in_quotes(name) + " in the sample of minor planets and comets: " +
                   (perhaps.empty() ? "give a file of orbits, or the elements" : perhaps)};
}

std::string code_of(const SSO_ID& id) {
    const auto code = static_cast<std::uint32_t>(id.type);
    std::string text;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        text += static_cast<char>(code >> shift & 0xFFU);
    return text + ":" + std::to_string(id.number);
}

std::string name_of(const SSO_ID& id) {
    if (id.name[0] != '\0') return id.name;
    for (const Named& named : kBodies)
        if (id_of(named.number) == id) return named.name;
    return code_of(id);
}

}  // namespace solsys::sky
