#include "draw/svg.h"

#include <fmt/format.h>

#include <cmath>

namespace solsys::draw {
namespace {

std::string list_of(const std::vector<Point>& points) {
    std::string list;
    for (const Point& p : points) {
        if (!list.empty()) list += ' ';
        list += number(p.x) + ',' + number(p.y);
    }
    return list;
}

void add(std::string& out, const char* name, const std::string& value) {
    if (!value.empty()) out += fmt::format(R"( {}="{}")", name, value);
}

void add_opacity(std::string& out, const char* name, double opacity) {
    if (opacity < 1) out += fmt::format(R"( {}="{}")", name, number(opacity));
}

}  // namespace

std::string number(double value) {
    std::string text = fmt::format("{:.2f}", value);
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text == "-0" ? "0" : text;
}

Style Style::filled(std::string colour, double opacity) {
    Style style;
    style.fill = std::move(colour);
    style.fill_opacity = opacity;
    return style;
}

Style Style::line(std::string colour, double width, double opacity, std::string dash) {
    Style style;
    style.stroke = std::move(colour);
    style.width = width;
    style.stroke_opacity = opacity;
    style.dash = std::move(dash);
    return style;
}

Style Style::clipped(std::string id) const {
    Style style = *this;
    style.clip = std::move(id);
    return style;
}

Style Style::outlined(std::string colour, double outline, double opacity) const {
    Style style = *this;
    style.stroke = std::move(colour);
    style.width = outline;
    style.stroke_opacity = opacity;
    return style;
}

std::string Style::str() const {
    std::string out;
    add(out, "fill", fill);
    if (fill != "none") add_opacity(out, "fill-opacity", fill_opacity);
    if (!stroke.empty()) {
        add(out, "stroke", stroke);
        if (width != 1) add(out, "stroke-width", number(width));
        add_opacity(out, "stroke-opacity", stroke_opacity);
        add(out, "stroke-dasharray", dash);
        add(out, "stroke-linecap", cap);
        add(out, "stroke-linejoin", cap);
    }
    if (!clip.empty()) add(out, "clip-path", "url(#" + clip + ")");
    return out;
}

std::string TextStyle::str() const {
    std::string out;
    add(out, "font-size", number(size));
    add(out, "fill", fill);
    if (anchor == Anchor::kMiddle) add(out, "text-anchor", "middle");
    if (anchor == Anchor::kEnd) add(out, "text-anchor", "end");
    if (bold) add(out, "font-weight", "600");
    if (italic) add(out, "font-style", "italic");
    add_opacity(out, "fill-opacity", opacity);
    if (spacing != 0) add(out, "letter-spacing", number(spacing));
    if (!halo.empty())
        out += fmt::format(R"( stroke="{}" stroke-width="{}" stroke-linejoin="round" )"
                           R"(paint-order="stroke")",
                           halo, number(size / 4));
    return out;
}

double text_width(std::string_view text, double size, double spacing) {
    double width = 0;
    for (const char c : text) {
        if ((static_cast<unsigned char>(c) & 0xC0U) == 0x80U) continue;
        const bool narrow = std::string_view("iljtfrI' .,:").find(c) != std::string_view::npos;
        const bool wide = (c >= 'A' && c <= 'Z') || c == 'm' || c == 'w';
        width += size * (narrow ? 0.36 : wide ? 0.74 : 0.58) + spacing;
    }
    return width;
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

Svg::Svg(double width, double height, const std::string& background, const std::string& title,
         const std::string& description)
    : width_(width), height_(height), title_(title), description_(description) {
    rectangle({0, 0}, width, height, Style::filled(background));
}

void Svg::line(Point a, Point b, const Style& style) {
    raw(fmt::format(R"(<line x1="{}" y1="{}" x2="{}" y2="{}"{}/>)", number(a.x), number(a.y),
                    number(b.x), number(b.y), style.str()));
}

void Svg::polyline(const std::vector<Point>& points, const Style& style) {
    raw(fmt::format(R"(<polyline points="{}"{}/>)", list_of(points), style.str()));
}

void Svg::polygon(const std::vector<Point>& points, const Style& style) {
    raw(fmt::format(R"(<polygon points="{}"{}/>)", list_of(points), style.str()));
}

void Svg::circle(Point centre, double radius, const Style& style) {
    raw(fmt::format(R"(<circle cx="{}" cy="{}" r="{}"{}/>)", number(centre.x), number(centre.y),
                    number(radius), style.str()));
}

void Svg::circle_within(Point centre, double radius, Point other, double other_radius,
                        const Style& style) {
    const std::string id = fmt::format("c{}", ++clips_);
    raw(fmt::format(R"(<clipPath id="{}"><circle cx="{}" cy="{}" r="{}"/></clipPath>)", id,
                    number(other.x), number(other.y), number(other_radius)));
    circle(centre, radius, style.clipped(id));
}

void Svg::ellipse(Point centre, double rx, double ry, double turn_deg, const Style& style) {
    raw(fmt::format(R"~(<ellipse cx="{0}" cy="{1}" rx="{2}" ry="{3}" )~"
                    R"~(transform="rotate({4} {0} {1})"{5}/>)~",
                    number(centre.x), number(centre.y), number(rx), number(ry),
                    number(turn_deg), style.str()));
}

void Svg::rectangle(Point corner, double width, double height, const Style& style,
                    double rounded) {
    raw(fmt::format(R"(<rect x="{}" y="{}" width="{}" height="{}"{}{}/>)", number(corner.x),
                    number(corner.y), number(width), number(height),
                    rounded > 0 ? fmt::format(R"( rx="{}")", number(rounded)) : "",
                    style.str()));
}

void Svg::path(const std::string& data, const Style& style, const std::string& transform) {
    raw(fmt::format(R"(<path d="{}"{}{}/>)", data,
                    transform.empty() ? "" : fmt::format(R"( transform="{}")", transform),
                    style.str()));
}

void Svg::text(Point at, std::string_view words, const TextStyle& style) {
    raw(fmt::format(R"(<text x="{}" y="{}"{}>{}</text>)", number(at.x), number(at.y),
                    style.str(), escaped(words)));
}

void Svg::raw(const std::string& element) {
    body_ += element;
    body_ += '\n';
}

std::string Svg::str() const {
    return fmt::format(
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="{0:.0f}" height="{1:.0f}" )"
        R"(viewBox="0 0 {0:.0f} {1:.0f}" role="img" )"
        R"(font-family="'Helvetica Neue', Helvetica, Arial, 'Liberation Sans', sans-serif">)"
        "\n<title>{2}</title>\n<desc>{3}</desc>\n{4}</svg>\n",
        width_, height_, escaped(title_), escaped(description_), body_);
}

}  // namespace solsys::draw
