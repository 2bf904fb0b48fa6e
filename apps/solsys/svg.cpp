#include "apps/solsys/svg.h"

#include <fmt/format.h>

#include <fstream>

#include "apps/solsys/failure.h"

namespace app {
namespace {

std::string list_of(const std::vector<Point>& points) {
    std::string list;
    for (const Point& p : points) list += fmt::format("{:.2f},{:.2f} ", p.x, p.y);
    return list;
}

}  // namespace

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

Svg::Svg(double width, double height, const std::string& background)
    : width_(width), height_(height) {
    rectangle({0, 0}, width, height, fmt::format(R"(fill="{}")", background));
}

void Svg::line(Point a, Point b, const std::string& style) {
    raw(fmt::format(R"(<line x1="{:.2f}" y1="{:.2f}" x2="{:.2f}" y2="{:.2f}" {}/>)", a.x, a.y,
                    b.x, b.y, style));
}

void Svg::polyline(const std::vector<Point>& points, const std::string& style) {
    raw(fmt::format(R"(<polyline points="{}" {}/>)", list_of(points), style));
}

void Svg::polygon(const std::vector<Point>& points, const std::string& style) {
    raw(fmt::format(R"(<polygon points="{}" {}/>)", list_of(points), style));
}

void Svg::circle(Point centre, double radius, const std::string& style) {
    raw(fmt::format(R"(<circle cx="{:.2f}" cy="{:.2f}" r="{:.2f}" {}/>)", centre.x, centre.y,
                    radius, style));
}

void Svg::ellipse(Point centre, double rx, double ry, double turn_deg,
                  const std::string& style) {
    raw(fmt::format(
        R"~(<ellipse cx="{0:.2f}" cy="{1:.2f}" rx="{2:.3f}" ry="{3:.3f}" transform="rotate({4:.2f} {0:.2f} {1:.2f})" {5}/>)~",
        centre.x, centre.y, rx, ry, turn_deg, style));
}

void Svg::rectangle(Point corner, double width, double height, const std::string& style) {
    raw(fmt::format(R"(<rect x="{:.2f}" y="{:.2f}" width="{:.2f}" height="{:.2f}" {}/>)",
                    corner.x, corner.y, width, height, style));
}

void Svg::text(Point at, std::string_view words, const std::string& style) {
    raw(fmt::format(R"(<text x="{:.2f}" y="{:.2f}" {}>{}</text>)", at.x, at.y, style,
                    escaped(words)));
}

void Svg::raw(const std::string& element) {
    body_ += element;
    body_ += '\n';
}

std::string Svg::str() const {
    return fmt::format(
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="{0:.0f}" height="{1:.0f}" viewBox="0 0 {0:.0f} {1:.0f}" font-family="Helvetica, Arial, 'Liberation Sans', sans-serif">
{2}</svg>
)",
        width_, height_, body_);
}

void Svg::save(const std::string& path) const {
    std::ofstream file(path, std::ios::binary);
    file << str();
    if (!file.flush()) throw BadInput(fmt::format("cannot write '{}'", path));
}

}  // namespace app
