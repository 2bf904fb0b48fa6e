#include "io/tables.h"

#include <cmath>
#include <initializer_list>
#include <string_view>

#include "core/constants.h"
#include "io/csv.h"
#include "io/fields.h"

namespace solsys_io {
namespace {

using solsys::kDegree;

constexpr double kMas = 4.84813681109536e-9;    // rad
constexpr double kGauss = 0.01720209895;        // rad/day at 1 au
constexpr double kLeastCosDeclination = 1e-12;  // nearer a pole, right ascension has no motion

// One row under interpretation: the first thing found wrong is kept.
class Row {
  public:
    explicit Row(const CsvTable& table) : table_(table) {}

    [[nodiscard]] std::string_view text(std::string_view name) const {
        return table_.cell(table_.column(name));
    }
    // A number in [least, greatest] that must be there.
    double need(std::string_view name, double least, double greatest) {
        const auto value = real_in(text(name));
        if (value && *value >= least && *value <= greatest) return *value;
        fail();
        return 0;
    }
    // A number that may be missing.
    double take(std::string_view name, double if_empty) {
        if (text(name).empty()) return if_empty;
        const auto value = real_in(text(name));
        if (!value) fail();
        return value.value_or(if_empty);
    }
    std::uint32_t take_number(std::string_view name) {
        if (text(name).empty()) return 0;
        const auto value = integer_in(text(name));
        if (!value || *value < 0) fail();
        return static_cast<std::uint32_t>(value.value_or(0));
    }
    void fail() { good_ = false; }
    [[nodiscard]] bool good() const { return good_; }

  private:
    const CsvTable& table_;
    bool good_ = true;
};

// Runs through a table; `interpret` turns a row into a record of the handler's.
template <class Record, class Interpret>
ReadSummary read_table(std::istream& in, std::initializer_list<std::string_view> needed,
                       const std::function<void(const Record&)>& on_record,
                       const ProblemHandler& on_problem, Interpret interpret) {
    ReadSummary summary;
    const auto report = [&](std::size_t line, std::string_view message) {
        ++summary.problems;
        if (on_problem) on_problem({line, message});
    };
    CsvTable table(in);
    bool usable = table.read_header();
    for (const std::string_view name : needed) usable = usable && table.column(name);
    if (!usable) report(table.line(), "no header row with the columns needed");

    while (usable && table.next()) {
        Row row(table);
        std::string_view message = table.fault();
        if (message.empty()) {
            const Record record = interpret(row);
            if (row.good()) {
                ++summary.records;
                on_record(record);
                continue;
            }
            message = "a needed value is missing, not a number or out of range";
        }
        report(table.line(), message);
    }
    summary.lines = table.line();
    summary.complete = usable && !table.broken();
    return summary;
}

ListedStar star_of(Row& row) {
    ListedStar star;
    StarObject& s = star.object;
    s.ra = kDegree * row.need("ra_deg", 0, 360);
    s.dec = kDegree * row.need("dec_deg", -90, 90);
    constexpr double kUnknown = STAR_UNKNOWN;
    const double pm_ra = row.take("pm_ra_mas_yr", kUnknown);
    const double pm_dec = row.take("pm_dec_mas_yr", kUnknown);
    const double parallax = row.take("parallax_mas", kUnknown);
    const double cos_dec = std::cos(s.dec);
    if (pm_ra != kUnknown)
        s.pm_ra =
            cos_dec > kLeastCosDeclination ? static_cast<float>(pm_ra * kMas / cos_dec) : 0.0F;
    if (pm_dec != kUnknown) s.pm_dec = static_cast<float>(pm_dec * kMas);
    if (parallax != kUnknown) s.parallax = static_cast<float>(parallax * kMas);
    s.radial_velocity = static_cast<float>(row.take("rv_km_s", kUnknown));
    s.magnitude = static_cast<float>(row.take("v_mag", kUnknown));
    star.hip = row.take_number("hip");
    star.name = row.text("name");
    star.bayer = row.text("bayer");
    star.flamsteed = row.text("flamsteed");
    star.constellation = row.text("con");
    return star;
}

constexpr double kAnyTime = 1e8;   // days
constexpr double kAnySize = 1e7;   // au
constexpr double kAnyShape = 100;  // eccentricity

MinorPlanet minor_planet_of(Row& row) {
    MinorPlanet p;
    p.epoch = row.need("epoch_jd", -kAnyTime, kAnyTime);
    p.a = row.need("a_au", 0, kAnySize);
    p.e = row.need("e", 0, 1);
    p.i = kDegree * row.need("i_deg", 0, 180);
    p.node = kDegree * row.need("node_deg", 0, 360);
    p.peri = kDegree * row.need("peri_deg", 0, 360);
    p.M = kDegree * row.need("mean_anomaly_deg", 0, 360);
    if (p.a <= 0 || p.e >= 1) row.fail();
    p.n = kDegree * row.take("n_deg_day", kGauss / kDegree / (p.a * std::sqrt(p.a)));
    p.H = static_cast<float>(row.take("h_mag", MinorPlanet::kUnknown));
    p.G = static_cast<float>(row.take("g_slope", MinorPlanet::kUnknown));
    p.number = row.take_number("number");
    copy_text(row.text("name"), p.name);
    return p;
}

Comet comet_of(Row& row) {
    Comet c;
    c.epoch = row.need("epoch_jd", -kAnyTime, kAnyTime);
    c.perihelion_time = row.need("t_peri_jd", -kAnyTime, kAnyTime);
    c.q = row.need("q_au", 0, kAnySize);
    c.e = row.need("e", 0, kAnyShape);
    c.i = kDegree * row.need("i_deg", 0, 180);
    c.node = kDegree * row.need("node_deg", 0, 360);
    c.peri = kDegree * row.need("peri_deg", 0, 360);
    if (c.q <= 0) row.fail();
    c.H = static_cast<float>(row.take("h_mag", Comet::kUnknown));
    c.K = static_cast<float>(row.take("k_mag", Comet::kUnknown));
    copy_text(row.text("designation"), c.name);
    return c;
}

}  // namespace

ReadSummary read_star_table(std::istream& in,
                            const std::function<void(const ListedStar&)>& on_star,
                            const ProblemHandler& on_problem) {
    return read_table(in, {"ra_deg", "dec_deg"}, on_star, on_problem, star_of);
}

ReadSummary read_minor_planet_table(std::istream& in,
                                    const std::function<void(const MinorPlanet&)>& on_planet,
                                    const ProblemHandler& on_problem) {
    return read_table(
        in,
        {"name", "epoch_jd", "a_au", "e", "i_deg", "node_deg", "peri_deg", "mean_anomaly_deg"},
        on_planet, on_problem, minor_planet_of);
}

ReadSummary read_comet_table(std::istream& in,
                             const std::function<void(const Comet&)>& on_comet,
                             const ProblemHandler& on_problem) {
    return read_table(
        in,
        {"designation", "epoch_jd", "q_au", "e", "i_deg", "node_deg", "peri_deg", "t_peri_jd"},
        on_comet, on_problem, comet_of);
}

}  // namespace solsys_io
