// solsys tonight: what an observer wants to know before going out.
#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "solsys/sky/diary.h"
#include "solsys/sky/occultations.h"
#include "solsys/sky/orbits.h"
#include "solsys/sky/phases.h"
#include "solsys/sky/tonight.h"

namespace app {
namespace {

struct TonightRequest {
    Options options;
    double faintest = 10;
};

// Something that happens in the night.
struct Event {
    sky::Instant at;
    std::string name, event;
    std::optional<double> azimuth_deg, altitude_deg, magnitude;
};

// A body on the page.
struct Seen {
    sky::Body body;
    sky::BestView best;
    sky::Appearance looks;
    std::optional<sky::Instant> rise, set;
};

struct Page {
    sky::NightHours night;
    sky::MoonPhase moon;  // at midnight
    std::vector<Seen> bodies;
    std::vector<std::string> unseen;
    std::vector<Event> events;  // in order
};

// From sunset to sunrise; noon to noon where the Sun does neither.
sky::Span sun_down(const sky::NightHours& night) {
    return {night.sunset.value_or(night.span.from), night.sunrise.value_or(night.span.to)};
}

void add_sun(Page& page) {
    const auto add = [&](const std::optional<sky::Instant>& t, const std::string& event) {
        if (t) page.events.push_back({*t, "Sun", event, {}, {}, {}});
    };
    add(page.night.sunset, "set");
    add(page.night.sunrise, "rise");
    for (std::size_t i = 0; i < 3; ++i) {
        add(page.night.dusk[i], std::string(kTwilightNames[i]) + " dusk");
        add(page.night.dawn[i], std::string(kTwilightNames[i]) + " dawn");
    }
}

void add_body(sky::Model& model, const Setting& setting, const sky::Body& body, Page& page) {
    const auto best = sky::best_view(model, *setting.site, body, page.night);
    const sky::Altitude horizon[] = {setting.refraction.horizon(*setting.site, body)};
    Seen seen{body, best.value_or(sky::BestView{}), {}, {}, {}};
    for (const sky::Passage& p :
         sky::passages(model, *setting.site, body, horizon, sun_down(page.night))) {
        page.events.push_back(
            {p.at, body.name, p.rising ? "rise" : "set", p.azimuth_deg, {}, {}});
        (p.rising ? seen.rise : seen.set) = p.at;
    }
    if (!best) {
        page.unseen.push_back(body.name);
        return;
    }
    move_to(model, best->at);
    if (const auto place = sky::apparent_place(model, body))
        seen.looks = sky::appearance_of(model, body, *place);
    page.events.push_back({best->at, body.name, "best", best->azimuth_deg, best->altitude_deg,
                           seen.looks.magnitude});
    page.bodies.push_back(std::move(seen));
}

// Minor planets and comets as bright as asked for.
std::vector<sky::Body> bright_small_bodies(sky::Model& model, const sky::Instant& t,
                                           double faintest) {
    std::vector<sky::Body> bright;
    for (const sky::Body& body : sky::small_bodies(t)) {
        move_to(model, t);
        if (!model.add(body)) continue;
        const auto place = sky::apparent_place(model, body);
        if (!place) continue;
        const auto magnitude = sky::appearance_of(model, body, *place).magnitude;
        if (magnitude && *magnitude <= faintest) bright.push_back(body);
    }
    return bright;
}

Page page_of(sky::Model& model, const Setting& setting, const TonightRequest& request,
             const sky::Instant& t) {
    LongSearch search;
    Page page;
    page.night = sky::night_around(model, *setting.site, setting.zone, t);
    const sky::Instant midnight = page.night.span.from.plus_days(page.night.span.days() / 2);
    page.moon = sky::moon_phase(model, midnight);
    add_sun(page);
    std::vector<sky::Body> bodies{sky::moon()};
    for (const sky::Body& body : need(sky::find_bodies("planets"))) bodies.push_back(body);
    for (const sky::Body& body : bright_small_bodies(model, midnight, request.faintest)) {
        sky::integrate(model, body);
        bodies.push_back(body);
    }
    for (const sky::Body& body : bodies) add_body(model, setting, body, page);

    for (const sky::DiaryEvent& e : sky::diary(model, page.night.span, {}, search.control()))
        page.events.push_back({e.at, e.first ? e.first->name : "", e.text, e.azimuth_deg,
                               e.altitude_deg, e.magnitude});
    for (const sky::LunarOccultation& o :
         sky::lunar_occultations(model, page.night.span, {}, search.control()))
        page.events.push_back(
            {o.at, o.body.name,
             fmt::format("{} behind the Moon, {} limb", sky::to_string(o.contact),
                         o.dark_limb ? "dark" : "bright"),
             o.moon_azimuth_deg, o.moon_altitude_deg,
             o.magnitude < 90 ? std::optional(o.magnitude) : std::nullopt});
    std::stable_sort(page.events.begin(), page.events.end(),
                     [](const Event& a, const Event& b) { return a.at < b.at; });
    return page;
}

// "17:49 - 06:31 (12 h 42 min)", each stretch.
std::string stretches(const std::vector<sky::Span>& spans, const sky::Zone& zone) {
    std::string text;
    for (const sky::Span& s : spans) {
        const int minutes = static_cast<int>(s.days() * 1440 + 0.5);
        text += fmt::format("{}{} - {} ({} h {} min)", text.empty() ? "" : ", ",
                            zone.clock(s.from), zone.clock(s.to), minutes / 60, minutes % 60);
    }
    return text;
}

std::string clocks(const std::array<std::optional<sky::Instant>, 3>& instants,
                   const sky::Zone& zone) {
    std::string text;
    for (const auto& t : instants)
        text += (text.empty() ? "" : ", ") + (t ? zone.clock(*t) : std::string("-"));
    return text;
}

const char* phase_name(double angle_deg) {
    static constexpr const char* names[] = {
        "new",  "waxing crescent", "first quarter", "waxing gibbous",
        "full", "waning gibbous",  "last quarter",  "waning crescent"};
    // Eight eighths of the month, the principal phases in the middle of theirs.
    return names[static_cast<int>(angle_deg / 45 + 0.5) % 8];
}

void print_hours(const Page& page, const sky::Zone& zone) {
    const sky::NightHours& night = page.night;
    const char* const all = night.dark.empty() ? "stays up" : "stays down";
    fmt::print("Sun   {}, {}\n",
               night.sunset ? "sets " + zone.clock(*night.sunset) : std::string(all),
               night.sunrise ? "rises " + zone.clock(*night.sunrise) : std::string(all));
    fmt::print("      dusk {} (civil, nautical, astronomical)\n", clocks(night.dusk, zone));
    fmt::print("      dawn {}\n", clocks({night.dawn[2], night.dawn[1], night.dawn[0]}, zone));
    fmt::print("Moon  {}, {:.0f} % lit\n", phase_name(page.moon.angle_deg),
               100 * page.moon.illuminated);
    fmt::print("Dark  {}\n", night.dark.empty() ? "never" : stretches(night.dark, zone));
    fmt::print("      {}\n\n", night.moonless.empty() ? "never without twilight and Moon"
                                                      : "without twilight and Moon " +
                                                            stretches(night.moonless, zone));
}

void print_bodies(const Page& page, const Setting& setting) {
    using Columns = std::vector<Column<Seen>>;
    const auto clock = [&](std::optional<sky::Instant> Seen::*member) {
        return [&setting, member](const Seen& s) {
            return Cell(s.*member ? setting.zone.clock(*(s.*member)) : std::string("-"));
        };
    };
    Columns columns{
        {"", "Body", nullptr, [](const Seen& s) { return Cell(s.body.name); }},
        {"", "Mag", fixed(1), [](const Seen& s) { return cell(s.looks.magnitude); }},
        {"", "Con", nullptr, [](const Seen& s) { return text_cell(s.looks.constellation); }},
        {"", "Rises", nullptr, clock(&Seen::rise)},
        {"", "Best", nullptr,
         [&](const Seen& s) { return Cell(setting.zone.clock(s.best.at)); }},
        {"", "Altitude", fixed(0), [](const Seen& s) { return s.best.altitude_deg; }},
        {"", " ", nullptr,
         [](const Seen& s) { return Cell(compass_point(s.best.azimuth_deg)); }},
        {"", "Sets", nullptr, clock(&Seen::set)},
        {"", "Diameter",
         [](double v) {
             return v < 120 ? fmt::format("{:.1f}\"", v) : fmt::format("{:.1f}'", v / 60);
         },
         [](const Seen& s) { return cell(s.looks.angular_diameter_arcsec); }}};
    Table<Seen> table(Format::kTable, columns);
    for (const Seen& seen : page.bodies) table.add(seen);
    table.finish();
    std::string unseen;
    for (const std::string& name : page.unseen) unseen += (unseen.empty() ? "" : ", ") + name;
    if (!unseen.empty()) fmt::print("Not up while it is dark: {}\n", unseen);
}

void print_page(const Page& page, const Setting& setting) {
    const sky::CivilDate next =
        sky::date_of_julian_day(sky::julian_day_number(page.night.date) + 1);
    fmt::print("The night of {} to {} at {} (times: {})\n\n", sky::to_string(page.night.date),
               sky::to_string(next), setting.site->name, setting.zone.name());
    print_hours(page, setting.zone);
    print_bodies(page, setting);
    fmt::print("\n");
    const sky::Span down = sun_down(page.night);
    for (const Event& e : page.events) {
        if (!down.holds(e.at) || e.event == "best" || e.name == "Sun") continue;
        const bool plain = e.event == "rise" || e.event == "set";
        fmt::print("{}  {}\n", setting.zone.clock(e.at),
                   plain ? fmt::format("{} {}s", e.name, e.event)
                   : e.event.find("behind the Moon") != std::string::npos
                       ? e.name + " " + e.event
                       : e.event);
    }
}

void print_events(const Page& page, const Setting& setting, const sky::Model& model) {
    std::vector<Column<Event>> columns;
    add_time_columns(columns, setting, "");
    const std::vector<Column<Event>> more{
        {"name", "", nullptr, [](const Event& e) { return text_cell(e.name); }},
        {"event", "", nullptr, [](const Event& e) { return Cell(e.event); }},
        {"azimuth_deg", "", nullptr, [](const Event& e) { return cell(e.azimuth_deg); }},
        {"altitude_deg", "", nullptr, [](const Event& e) { return cell(e.altitude_deg); }},
        {"magnitude", "", nullptr, [](const Event& e) { return cell(e.magnitude); }}};
    columns.insert(columns.end(), more.begin(), more.end());
    Table<Event> table(setting.format, columns, setting.context(model));
    for (const Event& event : page.events) table.add(event);
    table.finish();
}

// Whether a text for --time names a time of day: "...T18", "... 18:30", "jd:2461387.5".
bool names_a_time_of_day(std::string_view text) {
    const auto marks = [](char mark, char next) {
        return std::string_view("Tt :.").find(mark) != std::string_view::npos && next >= '0' &&
               next <= '9';
    };
    return std::adjacent_find(text.begin(), text.end(), marks) != text.end();
}

// A date alone means the night that begins on it.
sky::Instant wanted_instant(const Options& options, const Setting& setting) {
    const sky::Instant t = instant_of(options, setting);
    const bool starts_a_day =
        sky::days_between(setting.zone.day(setting.zone.date(t)).from, t) == 0;
    return starts_a_day && !names_a_time_of_day(options.time.value_or("now")) ? t.plus_days(0.5)
                                                                              : t;
}

void run(const TonightRequest& request) {
    const Setting setting = setting_with_site(request.options);
    const sky::Instant t = wanted_instant(request.options, setting);
    sky::Model model = model_of(request.options, setting);
    move_to(model, t);
    const Page page = page_of(model, setting, request, t);
    setting.format == Format::kTable ? print_page(page, setting)
                                     : print_events(page, setting, model);
}

}  // namespace

void add_tonight(CommandLine& main) {
    auto request = std::make_shared<TonightRequest>();
    Command command =
        main.add("tonight", "A night on a page: darkness, Moon, what is up when, what happens");
    add_instant_option(command, request->options);
    add_site_options(command, request->options);
    add_horizon_option(command, request->options);
    command.number("--faintest", request->faintest, {-2, 20},
                   "Minor planets and comets as bright as this");
    add_refraction_option(command, request->options);
    add_rotation_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "The night that --time lies in, or the next one; of a date, that which begins on it.\n"
        "Best: when a body stands highest while the Sun is more than 6 degrees down. JSON and\n"
        "CSV: all events in order of time.\n"
        "Examples:\n"
        "  solsys tonight --city London\n"
        "  solsys tonight --site 51.5,-0.1 --tz Europe/London --time 2026-12-13 --json");
    command.run([request] { run(*request); });
}

}  // namespace app
