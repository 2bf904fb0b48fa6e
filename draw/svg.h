// A drawing as SVG text: shapes in the order they are added, later ones on top.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace solsys::draw {

struct Point {
    double x = 0, y = 0;
};

// How a shape is filled and outlined. Colours are as CSS has them; empty: none.
struct Style {
    std::string fill = "none";
    std::string stroke;
    double width = 1;
    double fill_opacity = 1;
    double stroke_opacity = 1;
    std::string dash;  // "4 3"
    std::string clip;  // id of a clip path
    std::string cap;   // "round"

    static Style filled(std::string colour, double opacity = 1);
    static Style line(std::string colour, double width, double opacity = 1,
                      std::string dash = {});
    [[nodiscard]] Style clipped(std::string id) const;
    [[nodiscard]] Style outlined(std::string colour, double width, double opacity = 1) const;
    // As attributes.
    [[nodiscard]] std::string str() const;
};

inline constexpr double kDegrees = 57.29577951308232;  // of a radian

enum class Anchor { kStart, kMiddle, kEnd };

// How words are set. A halo of the background keeps them legible over lines.
struct TextStyle {
    double size = 13;
    std::string fill = "#000";
    Anchor anchor = Anchor::kStart;
    bool bold = false;
    bool italic = false;
    double opacity = 1;
    double spacing = 0;
    std::string halo = {};

    [[nodiscard]] std::string str() const;
};

// What pictures write most.
inline TextStyle words(double size, std::string fill, Anchor anchor = Anchor::kStart,
                       bool bold = false) {
    TextStyle style;
    style.size = size, style.fill = std::move(fill), style.anchor = anchor, style.bold = bold;
    return style;
}

// Width of a text in the face of the drawings, on the safe side.
double text_width(std::string_view text, double size, double spacing = 0);

// Text for element content and attributes.
std::string escaped(std::string_view text);

class Svg {
  public:
    // The title and the description are for those who cannot see the drawing, and for search.
    Svg(double width, double height, const std::string& background, const std::string& title,
        const std::string& description);

    void line(Point a, Point b, const Style& style);
    void polyline(const std::vector<Point>& points, const Style& style);
    void polygon(const std::vector<Point>& points, const Style& style);
    void circle(Point centre, double radius, const Style& style);
    // As much of a circle as lies within another one.
    void circle_within(Point centre, double radius, Point other, double other_radius,
                       const Style& style);
    void ellipse(Point centre, double rx, double ry, double turn_deg, const Style& style);
    void rectangle(Point corner, double width, double height, const Style& style,
                   double rounded = 0);
    // Path data, as SVG has it.
    void path(const std::string& data, const Style& style, const std::string& transform = {});
    void text(Point at, std::string_view words, const TextStyle& style);
    // Any element, well-formed, as it stands: gradients, clip paths, groups.
    void raw(const std::string& element);

    [[nodiscard]] double width() const { return width_; }
    [[nodiscard]] double height() const { return height_; }
    [[nodiscard]] std::string str() const;

  private:
    double width_, height_;
    std::string title_, description_;
    std::string body_;
    int clips_ = 0;  // of circles within others
};

// "12.3", "12": as short as two decimals allow.
std::string number(double value);

}  // namespace solsys::draw
