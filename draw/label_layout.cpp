#include "draw/label_layout.h"

#include <algorithm>
#include <cmath>

namespace solsys::draw {
namespace {

constexpr double kGap = 4;
constexpr double kStep = 12;
constexpr double kClear = 6;  // of a line from other objects

}  // namespace

double LabelLayout::Box::distance(Point p) const {
    return std::hypot(std::max({left - p.x, 0.0, p.x - right}),
                      std::max({top - p.y, 0.0, p.y - bottom}));
}

LabelLayout::Box LabelLayout::box_of(Point middle, double width, double height) {
    return {middle.x - width / 2, middle.y - height / 2, middle.x + width / 2,
            middle.y + height / 2};
}

bool LabelLayout::within(const Box& box) const {
    if (page_)
        return box.left >= page_->left && box.top >= page_->top && box.right <= page_->right &&
               box.bottom <= page_->bottom;
    for (const double x : {box.left, box.right})
        for (const double y : {box.top, box.bottom})
            if (std::hypot(x - centre_.x, y - centre_.y) > radius_) return false;
    return true;
}

bool LabelLayout::free(const Box& box) const {
    return within(box) && std::none_of(taken_.begin(), taken_.end(), [&](const Box& other) {
               return box.left < other.right && other.left < box.right &&
                      box.top < other.bottom && other.top < box.bottom;
           });
}

bool LabelLayout::taken_for_another(const Box& box, Point object) const {
    const double own = box.distance(object);
    return std::any_of(rivals_.begin(), rivals_.end(), [&](Point rival) {
        const bool itself = std::hypot(rival.x - object.x, rival.y - object.y) < 0.5;
        return !itself && box.distance(rival) < 1.6 * own;
    });
}

bool LabelLayout::crosses_rival(Point object, Point label) const {
    const double dx = label.x - object.x;
    const double dy = label.y - object.y;
    return std::any_of(rivals_.begin(), rivals_.end(), [&](Point rival) {
        const double x = rival.x - object.x;
        const double y = rival.y - object.y;
        const double along = (x * dx + y * dy) / (dx * dx + dy * dy);
        return std::hypot(x, y) >= 0.5 && along > 0 && along < 1 &&
               std::hypot(x - along * dx, y - along * dy) < kClear;
    });
}

void LabelLayout::occupy(Point at, double radius) {
    taken_.push_back(box_of(at, 2 * radius, 2 * radius));
}

std::optional<LabelLayout::Place> LabelLayout::beside(Point object, double radius, double width,
                                                      double height, double reach) {
    // Right and left first, then below and above, then the corners.
    static constexpr double sides[][2] = {{1, 0}, {-1, 0}, {0, 1},  {0, -1},
                                          {1, 1}, {1, -1}, {-1, 1}, {-1, -1}};
    for (double away = 0; away <= reach; away += kStep) {
        for (const auto& [sx, sy] : sides) {
            const double corner = sx != 0 && sy != 0 ? 0.7 : 1.0;
            const double gap = (radius + kGap + away) * corner;
            const Point middle{object.x + sx * (gap + width / 2),
                               object.y + sy * (gap + height / 2)};
            const bool mistaken = away == 0
                                      ? taken_for_another(box_of(middle, width, height), object)
                                      : crosses_rival(object, middle);
            if (mistaken) continue;
            if (at(middle, width, height)) return Place{middle, away > 0};
        }
    }
    return std::nullopt;
}

bool LabelLayout::at(Point middle, double width, double height) {
    const Box box = box_of(middle, width, height);
    if (!free(box)) return false;
    taken_.push_back(box);
    return true;
}

}  // namespace solsys::draw
