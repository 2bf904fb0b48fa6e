// solsys rise-set: when bodies rise, culminate and set, by the days of a site's clock.
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/month_calendar.h"
#include "apps/solsys/picture.h"
#include "apps/solsys/small_body_options.h"
#include "draw/year_picture.h"
#include "solsys/sky/rise_set_days.h"
#include "solsys/sky/tonight.h"

namespace app {
namespace {

struct RiseSetRequest {
    Options options;
    PictureOptions picture;
    std::vector<std::string> bodies;
    SmallBodyOptions orbit;
    std::optional<std::string> month;
    std::string twilight = "astronomical";
    bool by_time = false;
    bool best = false;
};

// A body's day; on a day with two risings or settings a second row has the second ones.
struct DayRow {
    const sky::Body* body;
    const sky::RiseSetDay* day;
    const std::optional<sky::BestView>* best;
    std::size_t turn = 0;

    template <class T>
    [[nodiscard]] const T* pick(const std::vector<T>& events) const {
        return turn < events.size() ? &events[turn] : nullptr;
    }
    [[nodiscard]] const sky::HorizonEvent* rise() const { return pick(day->rises); }
    [[nodiscard]] const sky::HorizonEvent* set() const { return pick(day->sets); }
    [[nodiscard]] const sky::Transit* transit() const { return pick(day->transits); }
};

using DayColumns = std::vector<Column<DayRow>>;

template <class Event>
void add_event(DayColumns& columns, const Setting& setting, const std::string& name,
               const char* title, const std::string& angle, const char* angle_title,
               const Event* (DayRow::*get)() const, double Event::*member) {
    add_instant_columns(columns, setting, name, title, [get](const DayRow& row) {
        const Event* const event = (row.*get)();
        return event ? std::optional(event->at) : std::nullopt;
    });
    columns.push_back({angle, angle_title, fixed(1), [get, member](const DayRow& row) {
                           const Event* const event = (row.*get)();
                           return event ? Cell(event->*member) : Cell();
                       }});
}

void add_best(DayColumns& columns, const Setting& setting) {
    const auto best = [](const DayRow& row) {
        return row.turn == 0 ? *row.best : std::optional<sky::BestView>();
    };
    add_instant_columns(columns, setting, "best", "Best", [best](const DayRow& row) {
        const auto view = best(row);
        return view ? std::optional(view->at) : std::nullopt;
    });
    columns.push_back({"best_altitude_deg", "Alt", fixed(1), [best](const DayRow& row) {
                           const auto view = best(row);
                           return view ? Cell(view->altitude_deg) : Cell();
                       }});
}

DayColumns day_columns(const Setting& setting, const RiseSetRequest& request) {
    const std::string& twilight = request.twilight;
    DayColumns columns{
        {"id", "", nullptr, [](const DayRow& row) { return Cell(sky::code_of(row.body->id)); }},
        {"name", "Body", nullptr, [](const DayRow& row) { return Cell(row.body->name); }},
        {"date", "Date", nullptr,
         [](const DayRow& row) { return Cell(sky::to_string(row.day->date)); }}};
    for (std::size_t i : {2, 1, 0})
        add_instant_columns(
            columns, setting, std::string(kTwilightNames[i]) + "_dawn",
            twilight == kTwilightNames[i] ? "Dawn" : "",
            [i](const DayRow& row) { return row.turn == 0 ? row.day->dawn[i] : std::nullopt; });
    add_event(columns, setting, "rise", "Rise", "rise_azimuth_deg", "Azim", &DayRow::rise,
              &sky::HorizonEvent::azimuth_deg);
    add_event(columns, setting, "transit", "Transit", "transit_altitude_deg", "Alt",
              &DayRow::transit, &sky::Transit::altitude_deg);
    add_event(columns, setting, "set", "Set", "set_azimuth_deg", "Azim", &DayRow::set,
              &sky::HorizonEvent::azimuth_deg);
    for (std::size_t i : {0, 1, 2})
        add_instant_columns(
            columns, setting, std::string(kTwilightNames[i]) + "_dusk",
            twilight == kTwilightNames[i] ? "Dusk" : "",
            [i](const DayRow& row) { return row.turn == 0 ? row.day->dusk[i] : std::nullopt; });
    if (request.best) add_best(columns, setting);
    columns.push_back({"state", "State", nullptr, [](const DayRow& row) {
                           return text_cell(sky::to_string(row.day->state));
                       }});
    return columns;
}

// The days of a span by the clock: that of --from alone without --to; an end on a midnight
// belongs to the day before.
struct Dates {
    sky::CivilDate first, last;
};
Dates dates_of(const sky::Span& span, const Options& options, const Setting& setting) {
    const sky::CivilDate first = setting.zone.date(span.from);
    if (!options.to) return {first, first};
    const sky::Instant end = span.days() > 0 ? span.to.plus_seconds(-1e-3) : span.to;
    return {first, setting.zone.date(end)};
}

struct BodyDays {
    sky::Body body;
    std::vector<sky::RiseSetDay> days;
    std::vector<std::optional<sky::BestView>> best;  // of the night after each day, or no value
};

// When each body stands highest in the darkness of the night that begins on each of its days.
void find_best(sky::Model& model, const Setting& setting, std::vector<BodyDays>& found,
               LongSearch& search) {
    std::map<int, sky::NightHours> nights;
    double done = 0;
    for (BodyDays& body : found) {
        for (std::size_t i = 0; i < body.days.size(); ++i) {
            if (!search.go_on(
                    (done + static_cast<double>(i) / static_cast<double>(body.days.size())) /
                    static_cast<double>(found.size())))
                return;
            const sky::CivilDate& date = body.days[i].date;
            auto [at, fresh] = nights.try_emplace(sky::julian_day_number(date));
            if (fresh)
                at->second = sky::night_around(model, *setting.site, setting.zone,
                                               setting.zone.instant({date, 12, 0, 0}));
            body.best[i] = sky::best_view(model, *setting.site, body.body, at->second);
        }
        ++done;
    }
}

void list_days(const std::vector<BodyDays>& found, const RiseSetRequest& request,
               const Setting& setting, const sky::Model& model) {
    Table<DayRow> table(setting.format, day_columns(setting, request), setting.context(model));
    for (const BodyDays& body : found)
        for (std::size_t i = 0; i < body.days.size(); ++i) {
            const sky::RiseSetDay& day = body.days[i];
            const std::size_t turns = std::max(
                {std::size_t{1}, day.rises.size(), day.sets.size(), day.transits.size()});
            for (std::size_t turn = 0; turn < turns; ++turn)
                table.add({&body.body, &day, &body.best[i], turn});
        }
    table.finish();
}

struct EventRow {
    const sky::Body* body;
    sky::Instant at;
    std::string event;
    std::optional<double> azimuth_deg, altitude_deg;
};

std::vector<EventRow> events_of(const std::vector<BodyDays>& found) {
    std::vector<EventRow> rows;
    for (const BodyDays& body : found) {
        for (const auto& best : body.best)
            if (best)
                rows.push_back(
                    {&body.body, best->at, "best", best->azimuth_deg, best->altitude_deg});
        for (const sky::RiseSetDay& day : body.days) {
            for (const auto& e : day.rises)
                rows.push_back({&body.body, e.at, "rise", e.azimuth_deg, {}});
            for (const auto& e : day.transits)
                rows.push_back({&body.body, e.at, "transit", {}, e.altitude_deg});
            for (const auto& e : day.sets)
                rows.push_back({&body.body, e.at, "set", e.azimuth_deg, {}});
            for (std::size_t i = 0; i < 3; ++i) {
                const std::string name(kTwilightNames[i]);
                if (day.dawn[i])
                    rows.push_back({&body.body, *day.dawn[i], name + " dawn", {}, {}});
                if (day.dusk[i])
                    rows.push_back({&body.body, *day.dusk[i], name + " dusk", {}, {}});
            }
        }
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const EventRow& a, const EventRow& b) { return a.at < b.at; });
    return rows;
}

void list_by_time(const std::vector<BodyDays>& found, const Setting& setting,
                  const sky::Model& model) {
    std::vector<Column<EventRow>> columns;
    add_time_columns(columns, setting, fmt::format("Time ({})", setting.zone.name()));
    const std::vector<Column<EventRow>> more{
        {"id", "", nullptr, [](const EventRow& r) { return Cell(sky::code_of(r.body->id)); }},
        {"name", "Body", nullptr, [](const EventRow& r) { return Cell(r.body->name); }},
        {"event", "Event", nullptr, [](const EventRow& r) { return Cell(r.event); }},
        {"azimuth_deg", "Azimuth", fixed_round(1),
         [](const EventRow& r) { return cell(r.azimuth_deg); }},
        {"altitude_deg", "Altitude", fixed(1),
         [](const EventRow& r) { return cell(r.altitude_deg); }}};
    columns.insert(columns.end(), more.begin(), more.end());
    Table<EventRow> table(setting.format, columns, setting.context(model));
    for (const EventRow& row : events_of(found)) table.add(row);
    table.finish();
}

void list(sky::Model& model, const RiseSetRequest& request, const Setting& setting) {
    const sky::Span span = span_of(request.options, setting, 1);
    const Dates dates = dates_of(span, request.options, setting);
    if (span.days() > 36600) throw BadInput("--to: at most a hundred years in one go");
    std::vector<std::string> names = request.bodies;
    const auto own = own_orbit_of(request.orbit, span.from);
    if (names.empty() && !own) names = {"sun", "moon"};
    std::vector<sky::Body> bodies = bodies_called(names, span.from);
    if (own) bodies.push_back(*own);
    std::vector<BodyDays> found;
    LongSearch search;
    for (const sky::Body& body : bodies) {
        if (!search.go_on(static_cast<double>(found.size()) /
                          static_cast<double>(bodies.size())))
            break;
        own&&& body == &bodies.back() ? void(need(model.add(body))) : make_known(model, body);
        if (!model.move_to(span.from) || !sky::apparent_place(model, body))
            throw BadInput(fmt::format("{} cannot be computed on {}: {}", body.name,
                                       span.from.iso(0), span_of_source(model)));
        found.push_back(
            {body,
             sky::rise_set_days(model, *setting.site, body, setting.zone, dates.first,
                                dates.last, setting.refraction.horizon(*setting.site, body)),
             {}});
        found.back().best.resize(found.back().days.size());
    }
    if (request.best) find_best(model, setting, found, search);
    if (setting.format == Format::kTable)
        fmt::print("Risings and settings at {} (times: {})\n\n", setting.site->name,
                   setting.zone.name());
    request.by_time ? list_by_time(found, setting, model)
                    : list_days(found, request, setting, model);
}

void draw(sky::Model& model, const RiseSetRequest& request, const Setting& setting) {
    const sky::Span span = span_of(request.options, setting, 1);
    const int year = setting.zone.date(span.from).year;
    const sky::NightsOfYear nights = sky::nights_of_year(model, setting.zone, year);
    if (nights.nights.empty())
        throw BadInput(
            fmt::format("the year {} cannot be computed: {}", year, span_of_source(model)));
    write_picture(
        solsys::draw::draw_year(nights, *setting.site, setting.zone, request.picture.light)
            .str(),
        request.picture);
}

void run(const RiseSetRequest& request) {
    check_picture_options(request.picture);
    if (std::find(std::begin(kTwilightNames), std::end(kTwilightNames), request.twilight) ==
        std::end(kTwilightNames))
        throw BadInput("--twilight: use civil, nautical or astronomical");
    const bool picture = request.picture.wanted();
    const bool bodies = !request.bodies.empty() || request.orbit.file || request.orbit.elements;
    if (request.best && (picture || request.month))
        throw BadInput("--best is of days: no --calendar, no --svg, no --png");
    if (picture && (request.month || request.by_time || bodies))
        throw BadInput("--svg and --png draw a year of Sun and Moon: no bodies, no --calendar");
    if (request.month && (bodies || request.options.from || request.options.to))
        throw BadInput("--calendar is of the Sun and the Moon of a month: no bodies, no span");
    const Setting setting = setting_with_site(request.options);
    sky::Model model = model_of(request.options, setting);
    if (picture) return draw(model, request, setting);
    if (request.month) return print_calendar(model, *request.month, request.twilight, setting);
    list(model, request, setting);
}

}  // namespace

void add_rise_set(CommandLine& main) {
    auto request = std::make_shared<RiseSetRequest>();
    Command command = main.add(
        "rise-set", "Risings, culminations and settings; a month's calendar; a year's chart");
    command.words("bodies", request->bodies,
                  "Bodies, stars, groups (without: the Sun and the Moon)");
    add_orbit_options(command, request->orbit);
    add_span_options(command, request->options, "the day of --from");
    command.text("--calendar", request->month, "The Sun and the Moon of a month: YYYY-MM");
    command.text("--twilight", request->twilight,
                 "Shown as dawn and dusk: civil, nautical or astronomical");
    command.flag("--by-time", request->by_time, "Events in order of time, a row each");
    command.flag("--best", request->best,
                 "Also when each body stands highest in the dark of the night after the day");
    add_picture_options(command, request->picture,
                        "Draw night, twilight and Moon of the year of --from");
    add_site_options(command, request->options);
    add_horizon_option(command, request->options);
    add_refraction_option(command, request->options);
    add_rotation_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "Without a span: today. Rows are days of the site's clock; on a day with two risings "
        "a\n"
        "second row has the second one. Rising and setting: the upper limb of Sun and Moon, "
        "the\n"
        "centre of others, with 34' of refraction. The height above sea level does not make "
        "the\n"
        "Sun rise earlier; --above-horizon does. Twilight: the Sun's centre at -6, -12, -18.\n"
        "Examples:\n"
        "  solsys rise-set sun moon --city London --from 2026-12-01 --to 2026-12-08\n"
        "  solsys rise-set sirius jupiter vesta --city Sydney --by-time\n"
        "  solsys rise-set moon jupiter --city Oslo --best\n"
        "  solsys rise-set --calendar 2026-12 --city Oslo\n"
        "  solsys rise-set --svg year.svg --city London --from 2026-01-01");
    command.run([request] { run(*request); });
}

}  // namespace app
