// One object from a site on the Earth, between instants at which the model was asked.
//
// The model is asked for the geocentric place at instants some h apart only; between them its
// vector on the equator of date, without aberration, is the polynomial through the six nearest
// (Lagrange). Parallax, the difference of light time, aberration and the turn of the Earth are
// put on at every instant. A look costs a tenth of a place from the model.
#pragma once

#include <array>

#include "core/linalg.h"
#include "events/search/sky_at.h"

namespace solsys::visibility {

class SitePath {
  public:
    // The site is the model's observer, on the surface of the Earth, as it stands now. Moves
    // the model and its observer; `observe_from_site` puts that back.
    SitePath(CSWSolSys& model, const SSO_ID& id, double jd_tt, double h);

    // A unit vector north, west, zenith, and the distance; NaN where the model has no place
    // within three h.
    struct Look {
        Vec3 direction{};
        double distance = 0;
    };
    Look at(double jd_tt);

    // How far and how fast the object goes about the Earth's centre near an instant, from the
    // six places around it: the least distance [au] and the largest speed and acceleration
    // [au/day, au/day^2] at any of them.
    struct Motion {
        double distance = 0;
        double speed = 0;
        double acceleration = 0;
        // What the polynomial through the six may be off, as an angle [rad]: from their fifth
        // difference.
        double error = 0;
    };
    Motion motion(double jd_tt);

    [[nodiscard]] double h() const { return h_; }
    // Asks the model at other instants from now on.
    void set_h(double h);
    void observe_from_site() { sky_.model().SetObserver(&site_); }

  private:
    struct Node {
        long index = 0;
        bool asked = false;
        Vec3 path{};           // from the Earth's centre, equator of date [au]; NaN: no place
        Vec3 velocity{};       // of the Earth, on the same axes [au/day]
        double equinoxes = 0;  // equation of the equinoxes [rad]
    };
    static constexpr int kNodes = 6;
    const Node& node(long index);
    // The six around an instant, and where in the middle interval it lies, 0 to 1.
    std::array<const Node*, kNodes> around(double jd_tt, double& x);

    search::SkyAt sky_;
    SSO_ID id_;
    OBSERVER site_;
    double start_;  // where indices count from
    double h_;
    double sidereal_at_start_ = 0;  // apparent, of the zero meridian
    Mat3 horizon_from_date_{};      // at the start: rows north, west, zenith
    Vec3 offset_{};                 // of the site from the Earth's centre, at the start [au]
    Vec3 spin_{};                   // its velocity [au/day]
    std::array<Node, 8> nodes_;
};

}  // namespace solsys::visibility
