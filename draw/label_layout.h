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

    // Keeps labels off a round object.
    void occupy(Point at, double radius);

    struct Place {
        Point middle;
        bool moved = false;  // not next to the object
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
    };
    static Box box_of(Point middle, double width, double height);
    [[nodiscard]] bool free(const Box& box) const;

    Point centre_;
    double radius_;
    std::vector<Box> taken_;
};

}  // namespace solsys::draw
