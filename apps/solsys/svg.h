// A drawing as SVG text: shapes in the order they are added, later ones on top.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app {

struct Point {
    double x = 0, y = 0;
};

// Text for element content and attributes.
std::string escaped(std::string_view text);

class Svg {
  public:
    Svg(double width, double height, const std::string& background);

    // `style` is a list of SVG attributes, such as R"(fill="none" stroke="#888")".
    void line(Point a, Point b, const std::string& style);
    void polyline(const std::vector<Point>& points, const std::string& style);
    void polygon(const std::vector<Point>& points, const std::string& style);
    void circle(Point centre, double radius, const std::string& style);
    void ellipse(Point centre, double rx, double ry, double turn_deg, const std::string& style);
    void rectangle(Point corner, double width, double height, const std::string& style);
    void text(Point at, std::string_view words, const std::string& style);
    // Any element, well-formed, as it stands: gradients, clip paths, groups.
    void raw(const std::string& element);

    [[nodiscard]] std::string str() const;
    // Throws BadInput when the file cannot be written.
    void save(const std::string& path) const;

  private:
    double width_, height_;
    std::string body_;
};

}  // namespace app
