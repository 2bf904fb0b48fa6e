// Risings, settings, twilights and passages through altitudes, at many sites.
#include "bindings.h"
#include "shared_model.h"
#include "table.h"

namespace solsys::python {
namespace {

using sky::Passage;
using sky::Rising;
using Sites = std::vector<sky::Site>;

struct SiteRising {
    int site;
    Rising what;
};
struct SitePassage {
    int site;
    Passage what;
};

// The search below cannot be stopped: it is asked for pieces of a long span, each some
// hundredths of a second.
constexpr double kPiece = 3653;
// How far beyond a piece its rows reach: a visit may begin in one and end in the next.
constexpr double kOverlap = 3;
// Less than there is between two visits, more than the error of an instant.
constexpr double kApart = 30.0 / 86400;

// Each ends where the next one begins.
std::vector<sky::Span> pieces_of(const sky::Span& span) {
    std::vector<sky::Span> pieces;
    sky::Instant from = span.from;
    for (; sky::days_between(from, span.to) > kPiece; from = from.plus_days(kPiece))
        pieces.push_back({from, from.plus_days(kPiece)});
    pieces.push_back({from, span.to});
    return pieces;
}

// `find(model, site, piece)` at every site in turn, until the search is to end.
template <class Row, class Find>
std::vector<Row> at_sites(SharedModel& shared, const Sites& sites, const sky::Span& span,
                          const py::object& progress, Find find) {
    const auto pieces = pieces_of(span);
    const auto all = static_cast<double>(sites.size() * pieces.size());
    return shared.search({}, progress, [&](sky::Model& model, Watch& watch) {
        std::vector<Row> rows;
        for (std::size_t i = 0; i < sites.size(); ++i)
            for (std::size_t k = 0; k < pieces.size(); ++k) {
                if (!watch.tell(static_cast<double>(i * pieces.size() + k) / all)) return rows;
                for (auto& what : find(model, sites[i], pieces[k]))
                    rows.push_back({static_cast<int>(i), std::move(what)});
            }
        return rows;
    });
}

// The visits of a span, piece by piece: those whose anchor lies in the piece, taken from a
// search that reaches beyond it.
class Visits {
  public:
    Visits(const sky::Body& body, const sky::Span& span) : body_(body), span_(span) {}

    std::vector<Rising> operator()(sky::Model& model, const sky::Site& site,
                                   const sky::Altitude& level, const sky::Span& piece) {
        const sky::Span reach{std::max(span_.from, piece.from.plus_days(-kOverlap)),
                              std::min(span_.to, piece.to.plus_days(kOverlap))};
        auto rows = sky::risings(model, site, body_, reach, level).rows;
        const bool first = piece.from <= span_.from, last = span_.to <= piece.to;
        // A visit on the border was found twice, an error of an instant apart.
        sky::Instant after = piece.from.plus_days(-kApart);
        if (!first && anchor_) after = std::max(after, anchor_->plus_days(kApart));
        std::erase_if(rows, [&](const Rising& row) {
            return (!first && row.anchor() < after) || (!last && piece.to <= row.anchor());
        });
        anchor_.reset();
        if (!rows.empty()) anchor_ = rows.back().anchor();
        return rows;
    }

  private:
    const sky::Body& body_;
    sky::Span span_;
    std::optional<sky::Instant> anchor_;
};

sky::Altitude horizon(const sky::Site& site, const sky::Body& body,
                      const std::optional<double>& degrees) {
    return degrees ? sky::Altitude{*degrees, false} : sky::horizon_of(site, body);
}

template <class Value>
auto of(Value Rising::*member) {
    return [=](const SiteRising& row) { return row.what.*member; };
}
// An angle that goes with an instant.
auto of(double Rising::*angle, std::optional<sky::Instant> Rising::*with) {
    return [=](const SiteRising& row) {
        return row.what.*with ? std::optional<double>(row.what.*angle) : std::nullopt;
    };
}

py::dict risings(SharedModel& shared, const sky::Body& body, const JulianPairs& span,
                 const Sites& sites, const std::optional<double>& horizon_deg,
                 const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = at_sites<SiteRising>(
        shared, sites, when, progress,
        [&, visits = Visits(body, when)](sky::Model& model, const sky::Site& site,
                                         const sky::Span& piece) mutable {
            return visits(model, site, horizon(site, body, horizon_deg), piece);
        });
    Table<SiteRising> table(rows);
    return table.column("site", &SiteRising::site)
        .column("rise", of(&Rising::rise))
        .column("transit", of(&Rising::transit))
        .column("set", of(&Rising::set))
        .column("rise_azimuth_deg", of(&Rising::rise_azimuth_deg, &Rising::rise))
        .column("transit_altitude_deg", of(&Rising::transit_altitude_deg, &Rising::transit))
        .column("set_azimuth_deg", of(&Rising::set_azimuth_deg, &Rising::set))
        .column("astronomical_dawn", of(&Rising::astronomical_dawn))
        .column("nautical_dawn", of(&Rising::nautical_dawn))
        .column("civil_dawn", of(&Rising::civil_dawn))
        .column("civil_dusk", of(&Rising::civil_dusk))
        .column("nautical_dusk", of(&Rising::nautical_dusk))
        .column("astronomical_dusk", of(&Rising::astronomical_dusk))
        .dict();
}

// Without altitudes: through the horizon of each site.
py::dict passages(SharedModel& shared, const sky::Body& body,
                  const std::vector<double>& altitudes_deg, const JulianPairs& span,
                  const Sites& sites, const py::object& progress) {
    const sky::Span when = span_of(span);
    const auto rows = at_sites<SitePassage>(
        shared, sites, when, progress,
        [&](sky::Model& model, const sky::Site& site, const sky::Span& piece) {
            std::vector<sky::Altitude> levels;
            for (const double degrees : altitudes_deg) levels.push_back({degrees, false});
            if (levels.empty()) levels.push_back(sky::horizon_of(site, body));
            return sky::passages(model, site, body, levels, piece);
        });
    Table<SitePassage> table(rows);
    return table.column("site", &SitePassage::site)
        .column("time", [](const SitePassage& row) { return row.what.at; })
        .column("rising", [](const SitePassage& row) { return row.what.rising; })
        .column("azimuth_deg", [](const SitePassage& row) { return row.what.azimuth_deg; })
        .column("altitude_deg",
                [&](const SitePassage& row) {
                    return altitudes_deg.empty()
                               ? sky::horizon_of(sites[static_cast<std::size_t>(row.site)],
                                                 body)
                                     .degrees
                               : altitudes_deg[row.what.which];
                })
        .dict();
}

}  // namespace

void bind_risings(py::module_& module) {
    module.def("risings", &risings);
    module.def("passages", &passages);
}

}  // namespace solsys::python
