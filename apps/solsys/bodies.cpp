#include "apps/solsys/bodies.h"

#include <fmt/format.h>

#include <charconv>

#include "apps/solsys/failure.h"
#include "apps/solsys/text.h"

namespace app {
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

}  // namespace

std::string code_of(const SSO_ID& id) {
    const auto code = static_cast<std::uint32_t>(id.type);
    std::string text;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        text += static_cast<char>(code >> shift & 0xFFU);
    return fmt::format("{}:{}", text, id.number);
}

std::string name_of(const SSO_ID& id) {
    if (id.name[0] != '\0') return id.name;
    for (const Named& body : kBodies)
        if (id_of(body.number) == id) return body.name;
    return code_of(id);
}

std::optional<Body> find_body(const std::string& text) {
    if (const std::size_t colon = text.find(':'); colon == 4) {
        std::int32_t number = 0;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data() + colon + 1, end, number);
        const char code[5] = {text[0], text[1], text[2], text[3], '\0'};
        const SSO_ID id(SSO_TYPE(code), number);
        if (error == std::errc{} && stop == end) return Body{id, name_of(id)};
    }
    const std::string wanted = folded(text);
    for (const Named& body : kBodies)
        if (folded(body.name) == wanted) return Body{id_of(body.number), body.name};
    if (wanted == "luna") return Body{SSO_ID(SSO_MOON, 301), "Moon"};
    return std::nullopt;
}

Body parse_body(const std::string& text) {
    if (const auto body = find_body(text)) return *body;
    throw BadInput(no_body(text));
}

std::string no_body(const std::string& text) {
    const std::string wanted = folded(text);
    for (const Named& body : kBodies)
        if (wanted.size() >= 3 && folded(body.name).starts_with(wanted))
            return fmt::format("no body '{}'; perhaps {}", text, body.name);
    return fmt::format(
        "no body '{}': use a name such as jupiter, io or sirius, or a code such as plnt:5, "
        "moon:501 or hip:32349",
        text);
}

}  // namespace app
