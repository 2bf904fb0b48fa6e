#include "draw/planet_chart.h"

#include <cmath>

#include "draw/label_layout.h"
#include "draw/palette.h"
#include "solsys/diary.h"
#include "solsys/sky/zone.h"

namespace solsys::draw {
namespace {

constexpr double kChartWidth = 900, kChartTop = 90, kChartLeft = 90, kChartPlot = 720,
                 kChartHeight = 900;

class PlanetChart {
  public:
    PlanetChart(const sky::Span& span, const std::string& title, bool light)
        : span_(span),
          theme_(theme(light)),
          svg_(kChartWidth, kChartTop + kChartHeight + 70, theme_.page, title,
               "Elongation of the planets from the Sun against date") {
        svg_.text({kChartLeft, 36}, title, words(20, theme_.ink, Anchor::kStart, true));
        svg_.rectangle({kChartLeft, kChartTop}, kChartPlot, kChartHeight,
                       Style::filled(theme_.panel));
        grid();
    }

    void curve(const sky::ElongationCurve& curve) {
        const std::string colour = body_colour(curve.planet.id, theme_);
        std::vector<Point> line;
        double last = 0;
        for (const auto& p : curve.points) {
            // The curve leaves one edge at opposition and comes in at the other.
            if (!line.empty() && std::fabs(p.elongation_deg - last) > 180) flush(line, colour);
            line.push_back(at(p.at, p.elongation_deg));
            last = p.elongation_deg;
        }
        const Point end = line.empty() ? Point{} : line.back();
        flush(line, colour);
        if (end.y == 0) return;
        svg_.text({end.x, kChartTop + kChartHeight + 16 + 14 * (names_++ % 3)},
                  curve.planet.name, words(11, colour, Anchor::kMiddle));
    }

    void event(const sky::DiaryEvent& event, const sky::ElongationCurve& curve) {
        const auto* mark = mark_of(event.kind);
        if (mark == nullptr) return;
        const double days = sky::days_between(span_.from, event.at);
        for (std::size_t i = 1; i < curve.points.size(); ++i) {
            if (sky::days_between(span_.from, curve.points[i].at) < days) continue;
            const Point where = at(event.at, curve.points[i].elongation_deg);
            svg_.circle(
                where, 3.5,
                Style::filled(body_colour(curve.planet.id, theme_)).outlined(theme_.ink, 0.8));
            marks_.push_back({where, mark});
            return;
        }
    }

    // Words beside the marks, as far as there is room; those that had to move have a line.
    Svg take() {
        constexpr double size = 10;
        LabelLayout labels({kChartLeft, kChartTop},
                           {kChartLeft + kChartPlot, kChartTop + kChartHeight});
        for (const auto& [at, text] : marks_) labels.occupy(at, 4), labels.add_rival(at);
        for (const auto& [at, text] : marks_) {
            const auto place = labels.beside(at, 4, text_width(text, size) + 2, size + 1, 48);
            if (!place) continue;
            if (place->moved) svg_.line(at, place->middle, Style::line(theme_.faint, 0.6, 0.7));
            TextStyle style = words(size, theme_.ink, Anchor::kMiddle);
            style.halo = theme_.panel;
            svg_.text({place->middle.x, place->middle.y + size * 0.35}, text, style);
        }
        return std::move(svg_);
    }

  private:
    static const char* mark_of(int kind) {
        switch (kind) {
            case SKYEVENT_INFERIOR_CONJUNCTION:
                return "inferior conjunction";
            case SKYEVENT_SUPERIOR_CONJUNCTION:
                return "superior conjunction";
            case SKYEVENT_GREATEST_ELONGATION_EAST:
            case SKYEVENT_GREATEST_ELONGATION_WEST:
                return "greatest elongation";
            case SKYEVENT_GREATEST_BRILLIANCY:
                return "greatest brilliancy";
            case SKYEVENT_OPPOSITION:
                return "opposition";
            case SKYEVENT_CONJUNCTION:
                return "conjunction";
            case SKYEVENT_TRANSIT:
                return "transit";
            default:
                return nullptr;
        }
    }

    [[nodiscard]] Point at(const sky::Instant& t, double elongation) const {
        // East of the Sun, as in the sky seen from the north, is left.
        return {kChartLeft + kChartPlot * (0.5 - elongation / 360),
                kChartTop + kChartHeight * sky::days_between(span_.from, t) / span_.days()};
    }

    void flush(std::vector<Point>& line, const std::string& colour) {
        if (line.size() > 1) svg_.polyline(line, Style::line(colour, 2));
        line.clear();
    }

    void grid() {
        for (int degrees = -180; degrees <= 180; degrees += 30) {
            const double x = at(span_.from, degrees).x;
            svg_.line({x, kChartTop}, {x, kChartTop + kChartHeight},
                      degrees == 0 ? Style::line(theme_.accent, 1.5)
                                   : Style::line(theme_.faint, 0.6, 0.5));
            svg_.text({x, kChartTop - 8}, std::to_string(std::abs(degrees)) + "\u00b0",
                      words(11, theme_.faint, Anchor::kMiddle));
        }
        svg_.text({kChartLeft, kChartTop - 26}, "evening sky", words(12, theme_.ink));
        svg_.text({kChartLeft + kChartPlot, kChartTop - 26}, "morning sky",
                  words(12, theme_.ink, Anchor::kEnd));
        svg_.text({kChartLeft + kChartPlot / 2, kChartTop - 26}, "Sun",
                  words(12, theme_.accent, Anchor::kMiddle));
        months();
    }

    void months() {
        static constexpr const char* names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
        const sky::Zone utc;
        sky::CivilDate month = utc.date(span_.from);
        for (month.day = 1;; ++month.month) {
            if (month.month > 12) month = {month.year + 1, 1, 1};
            const sky::Instant begins = utc.day(month).from;
            if (begins > span_.to) return;
            if (begins < span_.from) continue;
            const double y = at(begins, 0).y;
            svg_.line({kChartLeft, y}, {kChartLeft + kChartPlot, y},
                      Style::line(theme_.faint, 0.6, 0.5));
            svg_.text({kChartLeft - 8, y + 12}, names[month.month - 1],
                      words(11, theme_.faint, Anchor::kEnd));
            if (month.month == 1)
                svg_.text({kChartLeft - 8, y + 26}, std::to_string(month.year),
                          words(11, theme_.ink, Anchor::kEnd, true));
        }
    }

    sky::Span span_;
    const Theme& theme_;
    Svg svg_;
    int names_ = 0;
    struct Mark {
        Point at;
        const char* text;
    };
    std::vector<Mark> marks_;
};

}  // namespace

Svg planet_chart(const std::vector<sky::ElongationCurve>& curves,
                 const std::vector<sky::DiaryEvent>& events, const sky::Span& span,
                 const std::string& title, bool light) {
    PlanetChart chart(span, title, light);
    for (const sky::ElongationCurve& curve : curves) chart.curve(curve);
    for (const sky::DiaryEvent& event : events)
        for (const sky::ElongationCurve& curve : curves)
            if (event.first && event.first->id == curve.planet.id) chart.event(event, curve);
    return chart.take();
}

}  // namespace solsys::draw
