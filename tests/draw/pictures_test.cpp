// What pictures promise: any words, to scale, labels apart, the Moon lit from where the Sun
// is.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <regex>

#include "draw/eclipse_map.h"
#include "draw/eclipse_pictures.h"
#include "draw/label_layout.h"
#include "draw/moons_picture.h"
#include "draw/planet_chart.h"
#include "draw/sky_picture.h"
#include "draw/year_picture.h"
#include "solsys/sky/sky.h"
#include "tests/support/named_csv.h"

namespace {

using namespace solsys::draw;
namespace sky = solsys::sky;

constexpr double kDegrees = 57.29577951308232;

sky::Model model_at(const char* city, const char* time) {
    auto model = sky::Model::open();
    model->observe_from(*sky::find_city(city));
    EXPECT_TRUE(model->move_to(*sky::parse_time(time)));
    return std::move(*model);
}

std::vector<std::vector<double>> numbers(const std::string& text, const std::string& pattern) {
    std::vector<std::vector<double>> found;
    const std::regex regex(pattern);
    for (std::sregex_iterator m(text.begin(), text.end(), regex), end; m != end; ++m) {
        found.emplace_back();
        for (std::size_t i = 1; i < m->size(); ++i) found.back().push_back(std::stod((*m)[i]));
    }
    return found;
}

// Whether words and lines lie on the page; equators of planets may leave it sideways.
void expect_on_page(const std::string& picture) {
    const auto page = numbers(picture, R"~(viewBox="0 0 (\d+) (\d+)")~");
    ASSERT_EQ(page.size(), 1U);
    const auto inside = [&](double x, double y) {
        return x >= 0 && x <= page[0][0] && y >= 0 && y <= page[0][1];
    };
    const auto words = numbers(picture, R"~(<text x="(-?[\d.]+)" y="(-?[\d.]+)")~");
    EXPECT_GT(words.size(), 5U);
    for (const auto& at : words) EXPECT_TRUE(inside(at[0], at[1])) << at[0] << ' ' << at[1];
    for (const auto& l : numbers(picture, R"~(<line x1="(-?[\d.]+)" y1="(-?[\d.]+)" )~"
                                          R"~(x2="(-?[\d.]+)" y2="(-?[\d.]+)")~"))
        EXPECT_TRUE((inside(l[0], l[1]) && inside(l[2], l[3])) ||
                    (l[0] < 0 && l[2] > page[0][0]) || (l[2] < 0 && l[0] > page[0][0]))
            << l[0] << ' ' << l[1] << ' ' << l[2] << ' ' << l[3];
}

Configuration jupiter_at(sky::Model& model, const sky::Instant& t) {
    EXPECT_TRUE(model.move_to(t));
    Configuration shown{t, *sky::view_planet(model, *sky::find_body("Jupiter")), {}};
    for (const char* name : {"Io", "Europa", "Ganymede", "Callisto"})
        shown.moons.push_back(*sky::view_satellite(model, shown.planet, *sky::find_body(name)));
    return shown;
}

TEST(Pictures, ShowWordsThatAreMarkupElsewhere) {
    const std::string words = "<a href=\"x\"> & 'b' \u2603";
    auto model = model_at("Oslo", "2026-08-12T17:50Z");
    const sky::Site site = *model.site();
    const sky::Zone zone = *sky::Zone::find("Europe/Oslo");
    const sky::Span year{*sky::parse_time("2026-01-01"), *sky::parse_time("2027-01-01")};
    std::vector<std::string> pictures;
    std::vector<Configuration> evening;
    for (int i = 0; i <= 20; ++i)
        evening.push_back(jupiter_at(model, year.from.plus_days(i / 10.0)));
    for (const bool light : {false, true}) {
        pictures.push_back(
            draw_sky(sky::sky_chart(model), {words, words, light, {}, {}}).str());
        pictures.push_back(draw_configuration(evening[0], words, light).str());
        pictures.push_back(draw_waves(evening, zone, words, light).str());
        pictures.push_back(
            draw_year(sky::nights_of_year(model, zone, 2026), site, zone, light).str());
        pictures.push_back(planet_chart(sky::elongation_curves(model, year, 5),
                                        sky::diary(model, year), year, words, light)
                               .str());
        for (const auto kind : {sky::EclipseKind::kSolar, sky::EclipseKind::kLunar})
            for (const sky::Eclipse& eclipse : sky::find_eclipses(model, kind, year)) {
                pictures.push_back(eclipse_map_svg(sky::eclipse_map(model, eclipse), light));
                EXPECT_THAT(pictures.back(),
                            testing::HasSubstr(kind == sky::EclipseKind::kSolar
                                                   ? "Curves at sea level"
                                                   : "Where the Moon is above the horizon"));
                if (kind == sky::EclipseKind::kLunar)
                    pictures.push_back(moon_in_shadow_svg(model, eclipse, zone, light));
                else if (const auto local = sky::eclipse_at(model, eclipse, site))
                    pictures.push_back(
                        eclipsed_sun_svg(model, eclipse, *local, site, zone, light));
            }
    }
    EXPECT_GE(pictures.size(), 18U);
    for (const std::string& picture : pictures) {
        for (const char* none : {"<a href", "> &", "& '", "\"nan", "\"inf", "nan,", "inf,"})
            EXPECT_EQ(picture.find(none), std::string::npos) << none;
        expect_on_page(picture);
    }
    EXPECT_THAT(pictures.front(), testing::HasSubstr("&lt;a href=&quot;x&quot;&gt; &amp; "));
}

// Central line of the eclipse of 1999 from its published elements, independently of the
// library.
TEST(Pictures, CentralLineRunsThroughThePublishedPlaces) {
    auto model = model_at("Oslo", "1999-08-11T11:00Z");
    const auto found =
        sky::find_eclipses(model, sky::EclipseKind::kSolar,
                           {*sky::parse_time("1999-08-10"), *sky::parse_time("1999-08-13")});
    ASSERT_EQ(found.size(), 1U);
    const std::string svg = eclipse_map_svg(sky::eclipse_map(model, found[0]), false);
    // The map itself: twice as wide as high, all longitudes, north up.
    const auto frame =
        numbers(svg, R"~(<rect x="([\d.]+)" y="([\d.]+)" width="(1200)" height="(600)")~");
    ASSERT_FALSE(frame.empty());
    std::vector<std::vector<Point>> curves;
    constexpr std::string_view kStart = "<polyline points=\"";
    for (std::size_t at = 0; (at = svg.find(kStart, at)) != svg.npos;) {
        at += kStart.size();
        const std::size_t end = svg.find('"', at);
        const std::string style = svg.substr(end, svg.find('>', end) - end);
        if (style.find("stroke-width=\"2.2\"") == style.npos) continue;  // not the central line
        curves.emplace_back();
        for (const auto& p : numbers(svg.substr(at, end - at), R"((-?[\d.]+),(-?[\d.]+))"))
            curves.back().push_back({p[0], p[1]});
    }
    ASSERT_FALSE(curves.empty());
    const auto off = [&](Point p) {
        double least = 1e9;
        for (const auto& curve : curves)
            for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
                const Point a = curve[i], d{curve[i + 1].x - a.x, curve[i + 1].y - a.y};
                const double along = std::clamp(
                    ((p.x - a.x) * d.x + (p.y - a.y) * d.y) / (d.x * d.x + d.y * d.y), 0.0,
                    1.0);
                least = std::min(least,
                                 std::hypot(p.x - a.x - along * d.x, p.y - a.y - along * d.y));
            }
        return least;
    };
    int places = 0;
    for (const auto& row : solsys::test::read_named_csv("data/reference/central_lines.csv")) {
        if (row.text("date") != "1999-08-11") continue;
        const double longitude =
            row["longitude_td_deg"] + 0.00417807 * found[0].greatest.delta_t_seconds();
        EXPECT_LT(off({frame[0][0] + (longitude + 180) * frame[0][2] / 360,
                       frame[0][1] + (90 - row["latitude_deg"]) * frame[0][3] / 180}),
                  0.25)
            << longitude;
        ++places;
    }
    EXPECT_GE(places, 4);
}

TEST(Labels, StandApartAndNearestToTheirOwn) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> somewhere(-280, 280);
    std::vector<Point> objects;
    while (objects.size() < 250)
        objects.push_back({300 + somewhere(random), 300 + somewhere(random)});
    LabelLayout layout({300, 300}, 290);
    for (const Point& p : objects) {
        layout.occupy(p, 3);
        layout.add_rival(p);
    }
    constexpr double kWidth = 44, kHeight = 12;
    std::vector<Point> labels;
    for (const Point& object : objects) {
        const auto place = layout.beside(object, 3, kWidth, kHeight, 30);
        if (!place) continue;
        const Point m = place->middle;
        const auto gap = [m](Point p) {
            return std::hypot(std::max(0.0, std::fabs(p.x - m.x) - kWidth / 2),
                              std::max(0.0, std::fabs(p.y - m.y) - kHeight / 2));
        };
        for (const Point& other : labels)
            EXPECT_TRUE(std::fabs(other.x - m.x) >= kWidth ||
                        std::fabs(other.y - m.y) >= kHeight);
        for (const Point& other : objects) {
            EXPECT_GE(gap(other), 2.9);
            const bool rival = other.x != object.x || other.y != object.y;
            EXPECT_TRUE(place->moved || !rival || gap(other) > gap(object));
        }
        EXPECT_LE(
            std::hypot(std::fabs(m.x - 300) + kWidth / 2, std::fabs(m.y - 300) + kHeight / 2),
            290.1);
        labels.push_back(m);
    }
    EXPECT_GE(labels.size(), 20U);
}

const std::string kNumber = "(-?[\\d.]+)";
const std::string kLine = "<line x1=\"" + kNumber + "\" y1=\"" + kNumber + "\" x2=\"" +
                          kNumber + "\" y2=\"" + kNumber + "\"";

// Measured with the picture's own scale bar: satellites stand from the planet as far east and
// north as they are, and each has its name closest to it.
TEST(MoonsPicture, HasItsSatellitesToTheScaleOfItsBar) {
    auto model = model_at("Oslo", "2026-01-01");
    for (const double day : {0.0, 1.3, 2.6}) {
        const Configuration shown =
            jupiter_at(model, sky::parse_time("2026-01-01")->plus_days(day));
        const std::string svg = draw_configuration(shown, "", true).str();
        const auto bar =
            numbers(svg, kLine + "[^>]*stroke-width=\"2\"/>\n<text[^>]*>" + kNumber);
        ASSERT_EQ(bar.size(), 1U);
        EXPECT_EQ(bar[0][1], bar[0][3]);
        const double pixels = (bar[0][2] - bar[0][0]) / bar[0][4];
        const auto disks = numbers(
            svg, "<circle cx=\"" + kNumber + "\" cy=\"" + kNumber + "\" r=\"" + kNumber + "\"");
        for (const sky::SatelliteView& moon : shown.moons) {
            const Point at{500 - moon.east_arcsec * pixels, 294 - moon.north_arcsec * pixels};
            EXPECT_EQ(std::count_if(disks.begin(), disks.end(),
                                    [&](const auto& disk) {
                                        return std::hypot(disk[0] - at.x, disk[1] - at.y) < 0.5;
                                    }),
                      1)
                << moon.moon.name << ' ' << day;
            const auto word = numbers(svg, "<text x=\"" + kNumber + "\" y=\"" + kNumber +
                                               "\"[^>]*>" + moon.moon.name + "<");
            ASSERT_EQ(word.size(), 1U);
            EXPECT_LT(std::hypot(word[0][0] - at.x, word[0][1] - at.y), 60) << moon.moon.name;
        }
    }
}

// A satellite's wave against the strip that is the planet, whose half width is one radius, and
// the lines of midnights, a day apart.
TEST(MoonsPicture, WavesAreToScaleInRadiiAndDays) {
    auto model = model_at("Oslo", "2026-01-01");
    const sky::Instant start = *sky::parse_time("2026-01-01");
    std::vector<Configuration> instants;
    for (int i = 0; i <= 40; ++i)
        instants.push_back(jupiter_at(model, start.plus_days(i / 10.0)));
    const std::string svg = draw_waves(instants, sky::Zone(), "", true).str();
    const auto strip =
        numbers(svg, "<rect x=\"" + kNumber + "\" y=\"" + kNumber + "\" width=\"" + kNumber +
                         "\" height=\"" + kNumber + "\"");
    ASSERT_EQ(strip.size(), 2U);  // the page and it
    const double radius = strip[1][2] / 2, day = strip[1][3] / 4;
    const auto lines = numbers(svg, kLine);
    ASSERT_GE(lines.size(), 3U);
    for (const auto& line : lines) {
        const double from_midnight = (line[1] - strip[1][1]) / day;
        EXPECT_NEAR(from_midnight, std::round(from_midnight), 0.01);
        EXPECT_EQ(line[1], line[3]);
    }
    const auto points = numbers(svg, "[\" ]" + kNumber + "," + kNumber);
    for (const Configuration& instant : instants)
        for (const sky::SatelliteView& moon : instant.moons) {
            const Point at{strip[1][0] + radius * (1 - moon.x_radii),
                           strip[1][1] + sky::days_between(start, instant.at) * day};
            EXPECT_TRUE(std::any_of(points.begin(), points.end(), [&](const auto& p) {
                return std::hypot(p[0] - at.x, p[1] - at.y) < 0.3;
            })) << moon.moon.name;
        }
    // The legend's words stand right of their marks, at one height.
    const auto legend =
        numbers(svg, "<circle cx=\"" + kNumber + "\" cy=\"" + kNumber + "\"[^>]*>\n<text x=\"" +
                         kNumber + "\" y=\"" + kNumber);
    ASSERT_EQ(legend.size(), 4U);
    for (const auto& l : legend) {
        EXPECT_NEAR(l[2] - l[0], 12, 6);
        EXPECT_NEAR(l[3] - l[1], 5, 3);  // the base line
    }
}

// The page of the sky: bodies where altitude and azimuth put them, north up and east left.
TEST(SkyPicture, PutsBodiesWhereTheyStand) {
    auto model = model_at("Oslo", "2026-01-10T21:00Z");
    const sky::SkyChart chart = sky::sky_chart(model);
    const std::string svg = draw_sky(chart, {"", "", true, {}, {}}).str();
    const auto dome = numbers(svg, "<clipPath id=\"dome\"><circle cx=\"" + kNumber +
                                       "\" cy=\"" + kNumber + "\" r=\"" + kNumber + "\"");
    ASSERT_EQ(dome.size(), 1U);
    const auto word = [&svg](const std::string& name) {
        const auto found = numbers(
            svg, "<text x=\"" + kNumber + "\" y=\"" + kNumber + "\"[^>]*>" + name + "</text>");
        EXPECT_EQ(found.size(), 1U) << name;
        return found.empty() ? Point{} : Point{found[0][0], found[0][1]};
    };
    // Zenith distances are evenly spaced from the middle to the rim.
    const auto on_page = [&](const sky::Horizontal& at) {
        const double r = dome[0][2] * (90 - at.altitude_deg) / 90;
        return Point{dome[0][0] - r * std::sin(at.azimuth_deg / kDegrees),
                     dome[0][1] - r * std::cos(at.azimuth_deg / kDegrees)};
    };
    int seen = 0;
    for (const sky::ChartBody& body : chart.bodies) {
        if (body.at.altitude_deg < 5) continue;
        const Point at = on_page(body.at), name = word(body.body.name);
        EXPECT_LT(std::hypot(at.x - name.x, at.y - name.y), 70) << body.body.name;
        ++seen;
    }
    EXPECT_GE(seen, 3);
    const auto stars = numbers(
        svg, "<circle cx=\"" + kNumber + "\" cy=\"" + kNumber + "\" r=\"" + kNumber + "\"");
    double before = 0;  // brighter ones are no smaller
    for (const sky::ChartStar& star : chart.stars) {
        if (star.magnitude > 2.5) break;
        if (star.at.altitude_deg < 3) continue;
        const Point at = on_page(star.at);
        const auto dot = std::find_if(stars.begin(), stars.end(), [at](const auto& c) {
            return std::hypot(c[0] - at.x, c[1] - at.y) < 0.02;
        });
        ASSERT_NE(dot, stars.end()) << star.name;
        if (before > 0) {
            EXPECT_LE((*dot)[2], before + 0.006) << star.name;
        }
        before = (*dot)[2];
    }
    const double azimuths[] = {0, 45, 90, 135, 180, 225, 270, 315};
    const char* const winds[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    for (int k = 0; k < 8; ++k) {
        const Point at = on_page({azimuths[k], -6}), name = word(winds[k]);
        EXPECT_LT(std::hypot(at.x - name.x, at.y - name.y), 12) << winds[k];
    }
}

// The edges of day and of darkness in a row are the Sun's passages of that night.
TEST(YearPicture, NightsBeginAndEndWithTheSunsPassages) {
    auto model = model_at("Oslo", "2026-01-01");
    const sky::Site site = *model.site();
    const sky::Zone zone = *sky::Zone::find("Europe/Oslo");
    const sky::NightsOfYear year = sky::nights_of_year(model, zone, 2026);
    ASSERT_EQ(year.nights.size(), 365U);
    const std::string svg = draw_year(year, site, zone, true).str();
    const auto boxes =
        numbers(svg, "<rect x=\"" + kNumber + "\" y=\"" + kNumber + "\" width=\"" + kNumber +
                         "\" height=\"" + kNumber + "\"");
    ASSERT_GE(boxes.size(), 2U);
    const double left = boxes[1][0], top = boxes[1][1];
    const double hour = boxes[1][2] / 24, row_height = boxes[1][3] / 365;
    // Noon at the left edge, midnight in the middle.
    for (const auto& [label, at] :
         {std::pair{"12", 0}, std::pair{"18", 6}, std::pair{"00", 12}}) {
        const auto word = numbers(svg, "<text x=\"" + kNumber + "\"[^>]*>" + label + "</text>");
        ASSERT_GE(word.size(), 1U);
        EXPECT_NEAR(word[0][0], left + at * hour, 0.1);
    }
    std::vector<std::string> bands;
    constexpr std::string_view kStart = "crispEdges\" d=\"";
    for (std::size_t at = 0; (at = svg.find(kStart, at)) != svg.npos;) {
        at += kStart.size();
        bands.push_back(svg.substr(at, svg.find('"', at) - at));
    }
    ASSERT_GE(bands.size(), 5U);
    const sky::Altitude levels[] = {sky::horizon_of(site, sky::sun()), {-12}};
    for (const std::size_t row : {3U, 80U, 250U, 290U, 355U})
        for (int k = 0; k < 2; ++k) {
            const auto& night = year.nights[row];
            const auto above = sky::times_above(model, site, sky::sun(), levels[k], night.span);
            ASSERT_EQ(above.size(), 2U) << row;
            const double y = top + row_height * static_cast<double>(row);
            const auto box = numbers(bands[k == 0 ? 0 : 2],
                                     "M" + kNumber + " " + number(y) + "h" + kNumber + "v");
            ASSERT_EQ(box.size(), 1U) << row << ' ' << number(y);
            const auto x_of = [&](const sky::Instant& t) {
                return left + hour * 24 * sky::days_between(night.span.from, t);
            };
            // Six minutes: altitudes are sampled, and straight between.
            EXPECT_NEAR(box[0][0], x_of(above[0].to), 0.1 * hour) << row;
            EXPECT_NEAR(box[0][0] + box[0][1], x_of(above[1].from), 0.1 * hour) << row;
        }
}

// Read off the chart's own grid: elongations, and events on the curve of their planet.
TEST(PlanetChart, CurvesAndEventsAreOnItsGrid) {
    auto model = model_at("Oslo", "2026-01-01");
    const sky::Span year{*sky::parse_time("2026-01-01"), *sky::parse_time("2027-01-01")};
    const auto curves = sky::elongation_curves(model, year, 5);
    const std::string svg = planet_chart(curves, sky::diary(model, year), year, "", true).str();
    std::vector<std::vector<double>> upright, level;
    for (const auto& line : numbers(svg, kLine + "[^>]*opacity")) {
        if (line[0] == line[2] && line[3] - line[1] > 800) upright.push_back(line);
        if (line[1] == line[3] && line[2] - line[0] > 700) level.push_back(line);
    }
    ASSERT_EQ(upright.size(), 12U);  // -180 to 180 by 30, but for the Sun's
    ASSERT_EQ(level.size(), 13U);    // months
    const double evening = upright[0][0] > upright[11][0] ? 1 : -1;
    EXPECT_EQ(evening, 1);  // east is to the left, and the grid goes from -180
    const double pixels = (upright[0][0] - upright[11][0]) / 360;
    const double middle = (upright[0][0] + upright[11][0]) / 2;
    const double a_day = (level[12][1] - level[0][1]) / 365;
    const auto points = numbers(svg, "[\" ]" + kNumber + "," + kNumber);
    const auto on_curve = [&points](double x, double y, double within) {
        return std::any_of(points.begin(), points.end(), [&](const auto& p) {
            return std::hypot(p[0] - x, p[1] - y) < within;
        });
    };
    for (const sky::ElongationCurve& curve : curves)
        for (const auto& point : curve.points)
            EXPECT_TRUE(on_curve(middle - pixels * point.elongation_deg,
                                 level[0][1] + a_day * sky::days_between(year.from, point.at),
                                 0.1))
                << curve.planet.name;
    const auto marks =
        numbers(svg, "<circle cx=\"" + kNumber + "\" cy=\"" + kNumber + "\" r=\"3.5");
    EXPECT_GT(marks.size(), 15U);
    for (const auto& mark : marks) EXPECT_TRUE(on_curve(mark[0], mark[1], 14)) << mark[1];
}

// Also of an eclipse that only grazes the penumbra: no disk leaves the page or comes to the
// words below.
TEST(Pictures, ShowTheWholeMoonInTheShadow) {
    auto model = model_at("Oslo", "2026-01-01");
    const auto found =
        sky::find_eclipses(model, sky::EclipseKind::kLunar,
                           {*sky::parse_time("2026-01-01"), *sky::parse_time("2030-01-01")});
    ASSERT_GE(found.size(), 8U);
    for (const sky::Eclipse& eclipse : found) {
        const std::string svg = moon_in_shadow_svg(model, eclipse, sky::Zone(), false);
        const auto disks = numbers(
            svg, R"~(<circle cx="(-?[\d.]+)" cy="(-?[\d.]+)" r="([\d.]+)" fill="#eee)~");
        EXPECT_GE(disks.size(), 3U);
        for (const auto& disk : disks) {
            EXPECT_GT(disk[0] - disk[2], 0) << eclipse.type;
            EXPECT_LT(disk[0] + disk[2], 1000) << eclipse.type;
            EXPECT_GT(disk[1] - disk[2], 80 + 40) << eclipse.type;
            EXPECT_LT(disk[1] + disk[2], 790 - 40) << eclipse.type;
        }
    }
}

// By day, with both up, from both hemispheres: the bright half of the Moon points to the Sun.
TEST(SkyPicture, TurnsTheMoonsBrightLimbToTheSun) {
    int seen = 0;
    for (const char* city : {"Oslo", "Nairobi", "Sydney"})
        for (int day = 1; day <= 28; day += 2) {
            char time[32];
            std::snprintf(time, sizeof time, "2026-05-%02dT%02d:00Z", day,
                          *city == 'S' ? 2 : 10);
            auto model = model_at(city, time);
            const std::string svg =
                draw_sky(sky::sky_chart(model), {"", "", false, {}, {}}).str();
            const auto sun =
                numbers(svg, R"~(<circle cx="([\d.]+)" cy="([\d.]+)"[^>]*url\(#sun\))~");
            const auto moon = numbers(
                svg,
                R"~(transform="translate\(([\d.]+) ([\d.]+)\) rotate\((-?[\d.]+)\)" fill="#f4efe0")~");
            if (sun.empty() || moon.empty()) continue;
            const double x = sun[0][0] - moon[0][0], y = sun[0][1] - moon[0][1];
            const double apart = std::hypot(x, y);
            // Close by, the way to the Sun is nearly straight on the page.
            if (apart < 25 || apart > 220) continue;
            const double turn = moon[0][2] / kDegrees;
            EXPECT_GT((x * std::cos(turn) + y * std::sin(turn)) / apart,
                      std::cos(25 / kDegrees))
                << city << ' ' << time;
            ++seen;
        }
    EXPECT_GE(seen, 5);
}

}  // namespace
