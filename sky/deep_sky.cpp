#include <charconv>

#include "core/constants.h"
#include "sky/stars.h"

namespace solsys::sky {
namespace {

// id,messier,caldwell,designation,name,type,ra_deg,dec_deg,v_mag,major_arcmin,minor_arcmin,con
constexpr std::string_view kRows =
#include "deep_sky_text.inc"
    ;

DeepSkyRow row_in(std::string_view line) {
    DeepSkyRow row;
    row.id = take_field(line, ',');
    row.messier = static_cast<int>(number_in(take_field(line, ','), 0));
    row.caldwell = static_cast<int>(number_in(take_field(line, ','), 0));
    for (std::string_view* const text : {&row.designation, &row.name, &row.type})
        *text = take_field(line, ',');
    row.ra_deg = number_in(take_field(line, ','), 0);
    row.dec_deg = number_in(take_field(line, ','), 0);
    row.magnitude = number_in(take_field(line, ','), 99);
    row.major_arcmin = number_in(take_field(line, ','), 0);
    row.minor_arcmin = number_in(take_field(line, ','), row.major_arcmin);
    row.constellation = line;
    return row;
}

std::vector<DeepSkyRow> read_rows() {
    std::vector<DeepSkyRow> rows;
    std::string_view text = kRows;
    while (!text.empty()) rows.push_back(row_in(take_field(text, '\n')));
    return rows;
}

// Types of the library by the letters of the list.
std::int32_t type_code(std::string_view type) {
    if (type == "G") return SSO_GALA;
    if (type == "OC" || type == "GC" || type == "CN" || type == "AST") return SSO_CLST;
    if (type == "DS" || type == "SC") return SSO_DSNV;
    return SSO_NEBU;
}

bool one_is(std::string_view names, std::string_view wanted) {
    while (!names.empty())
        if (folded(take_field(names, ';')) == wanted) return true;
    return false;
}

}  // namespace

const std::vector<DeepSkyRow>& deep_sky_objects() {
    static const std::vector<DeepSkyRow> rows = read_rows();
    return rows;
}

Body body_of(const DeepSkyRow& row) {
    StarObject object;
    object.ra = row.ra_deg * kDegree;
    object.dec = row.dec_deg * kDegree;
    if (row.magnitude < 90) object.magnitude = static_cast<float>(row.magnitude);
    const auto number = static_cast<std::int32_t>(&row - deep_sky_objects().data()) + 1;
    std::string name(row.id);
    if (!row.name.empty()) name += " " + std::string(row.name.substr(0, row.name.find(';')));
    return {SSO_ID(type_code(row.type), number), name, object};
}

const DeepSkyRow* find_deep_sky(std::string_view text) {
    std::string wanted = folded(text);
    if (wanted.starts_with("messier")) wanted.erase(1, 6);
    if (wanted.starts_with("caldwell")) wanted.erase(1, 7);
    for (const DeepSkyRow& row : deep_sky_objects())
        if (folded(row.id) == wanted || one_is(row.designation, wanted) ||
            one_is(row.name, wanted) ||
            (row.caldwell > 0 && wanted == "c" + std::to_string(row.caldwell)))
            return &row;
    return nullptr;
}

}  // namespace solsys::sky
