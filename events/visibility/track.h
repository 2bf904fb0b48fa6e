// One object as the model's observer sees it, instant by instant.
#pragma once

#include "solsys/solar_system.h"

namespace solsys::visibility {

struct Horizontal {
    double azimuth = 0;  // from north through east
    double altitude = 0;
};

// Direction of an object of declination `dec` at an hour angle, for latitude `lat`.
Horizontal at_hour_angle(double hour_angle, double dec, double lat);

// x into (-pi, pi].
double wrapped(double x);

// JD of universal time from one of dynamical time, and back.
double ut_from_et(double jd_et);
double et_from_ut(double jd_ut);

// Whether a Julian date can be split into a day number and a fraction.
bool usable(double jd);

// The apparent place of an object at the instant looked at last, for the observer that the
// model had when this was made. Instants are JD in dynamical time.
class Track {
  public:
    Track(CSWSolSys& model, const SSO_ID& id);

    // Moves the model and looks. False when the object cannot be computed there.
    bool at(double jd_et);

    [[nodiscard]] double distance() const { return place_[0]; }
    [[nodiscard]] double ra() const { return place_[1]; }
    [[nodiscard]] double dec() const { return place_[2]; }
    // Local apparent sidereal time of the instant [rad], any number of turns off.
    [[nodiscard]] double sidereal_time() const;
    // From the model's own frames.
    [[nodiscard]] Horizontal horizontal() const;
    // Apparent radius of the disk [rad]; 0 unknown.
    [[nodiscard]] double semidiameter() const;

    [[nodiscard]] double latitude() const { return latitude_; }
    [[nodiscard]] const SSO_ID& id() const { return id_; }
    [[nodiscard]] CSWSolSys& model() const { return *model_; }

  private:
    CSWSolSys* model_;
    SSO_ID id_;
    double radius_km_;
    double longitude_, latitude_;
    double jd_ = 0;
    double place_[3] = {};
    double light_time_ = 0;  // of the last look [day]: the first guess of the next
};

}  // namespace solsys::visibility
