// Places labels beside what they name so that none covers another or a bright object.
#pragma once

#include <optional>
#include <vector>

#include "draw/svg.h"

namespace solsys::draw {

class LabelLayout {
  public:
    // Labels stay within the circle.
    LabelLayout(Point centre, double radius) : centre_(centre), radius_(radius) {}
    // Labels stay within the rectangle.
    LabelLayout(Point corner, Point opposite)
        : page_(Box{corner.x, corner.y, opposite.x, opposite.y}) {}

    // Keeps labels off a round object.
    void occupy(Point at, double radius);
    // An object that a label of another one must not be taken for its own: a label next to its
    // object is nearer to that than to any rival.
    void add_rival(Point at) { rivals_.push_back(at); }

    struct Place {
        Point middle;
        bool moved = false;  // not next to the object: it wants a leader line
    };
    // Takes room for a label of a width and height beside an object of a radius; none where
    // everything around is taken. `reach` is how far off it may move.
    std::optional<Place> beside(Point object, double radius, double width, double height,
                                double reach = 0);
    // Takes the room around a point, if it is free.
    bool at(Point middle, double width, double height);

  private:
    struct Box {
        double left, top, right, bottom;

        [[nodiscard]] double distance(Point p) const;
    };
    static Box box_of(Point middle, double width, double height);
    [[nodiscard]] bool within(const Box& box) const;
    [[nodiscard]] bool free(const Box& box) const;
    [[nodiscard]] bool taken_for_another(const Box& box, Point object) const;
    // Whether a line to a label runs over another object.
    [[nodiscard]] bool crosses_rival(Point object, Point label) const;

    Point centre_;
    double radius_ = 0;
    std::optional<Box> page_;
    std::vector<Box> taken_;
    std::vector<Point> rivals_;
};

}  // namespace solsys::draw
