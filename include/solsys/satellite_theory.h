/// \file
/// States of the natural satellites relative to their primaries, one class per system.
///
/// Every theory answers two questions about moon `moonNumber` of its system (1, 2, ...): its
/// state vector at an instant, and the gravitational parameter of the body that it orbits.
/// Objects are constant after construction and share nothing: any number of threads may ask
/// the same object.
#pragma once

#include <cstddef>
#include <cstdint>

#include "solsys/export.h"

/// One row of a mean-element table: an ellipse in a reference plane, precessing uniformly.
/// Angles in degrees, rates in degrees per day of 86400 s, time scale TDB (TT serves as well).
struct PetitSatElements {
    std::int16_t number;       ///< body number, planet x 100 + moon
    std::uint16_t unit_flag;   ///< unit of `a`: 0 km, 1 au of 149597870.691 km
    std::uint8_t reserved[4];  ///< not read
    double gm;                 ///< of the primary [km^3/s^2]
    double pole_ra;            ///< pole of the reference plane, J2000 right ascension [deg]
    double pole_dec;           ///< and declination [deg]
    double epoch;              ///< Julian date
    double a;                  ///< semi-major axis, see `unit_flag`
    double e;                  ///< eccentricity
    double i;                  ///< inclination to the reference plane [deg]
    double m;                  ///< mean anomaly at the epoch [deg]
    double peri;               ///< argument of the pericentre at the epoch [deg]
    double node;               ///< node on the reference plane at the epoch, from the plane's
                               ///< ascending node on the J2000 equator [deg]
    double rate_m;             ///< mean motion [deg/day]
    double rate_peri;          ///< [deg/day]
    double rate_node;          ///< [deg/day]
};
static_assert(sizeof(PetitSatElements) == 112);
static_assert(offsetof(PetitSatElements, unit_flag) == 2);
static_assert(offsetof(PetitSatElements, gm) == 8);
static_assert(offsetof(PetitSatElements, a) == 40);
static_assert(offsetof(PetitSatElements, m) == 64);
static_assert(offsetof(PetitSatElements, rate_m) == 88);
static_assert(offsetof(PetitSatElements, rate_node) == 104);

/// Answer of `GetSatVector` for a moon that the theory does not cover.
constexpr int SAT_NOT_COVERED = 111;

/// The interface of the satellite theories. Two virtual operations and no others; objects are
/// owned through their concrete classes.
class SOLSYS_API SatTheory {
  public:
    /// State of a moon relative to its primary.
    ///
    /// \param day, fraction   instant, TT (or TDB, which changes nothing here): Julian date
    ///                        day + fraction
    /// \param moonNumber      number of the moon within its system; every class but JupiterSat
    ///                        takes it modulo 100, so that the full body number serves as well
    /// \param velocityWanted  accepted for every theory; the velocity is always computed
    /// \param[out] out        position [au] and velocity [au/day], mean equator and equinox of
    ///                        J2000; written only when the answer is 0
    /// \return 0; 111 (`SAT_NOT_COVERED`) for a moon that the theory does not cover; -1 when
    ///         the elements are invalid at this instant, or the instant is not finite or 4e9
    ///         days or more from J2000; -1000 when Kepler's equation does not
    ///         converge
    virtual int GetSatVector(int day, double fraction, int moonNumber,
                             unsigned char velocityWanted, double* out) const = 0;

    /// Gravitational parameter of the body that the moon orbits [au^3/day^2]; -1.0 for a moon
    /// number that is not covered. The number is taken as it is by every class.
    virtual double GetPrimaryGM(int moonNumber) const = 0;

    const double kmToAU = 6.6845871226705985e-09;    ///< 1 / 149597870.691
    const double km3ToAU3 = 2.9869211904004605e-25;  ///< its cube

  protected:
    SatTheory() = default;                  ///< of a concrete class
    SatTheory(const SatTheory&) = default;  ///< of a concrete class
    ~SatTheory() = default;
};

/// Moons described by precessing Keplerian ellipses. The base of most systems' classes; by
/// itself it serves no moon.
class SOLSYS_API PetitSat : SatTheory {
  public:
    using SatTheory::km3ToAU3;
    using SatTheory::kmToAU;

    /// The object as the interface that all theories share.
    SatTheory& AsTheory() { return *this; }
    const SatTheory& AsTheory() const { return *this; }  ///< \overload

    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

    /// State of the moon of one table row about the centre of that row.
    ///
    /// \param systemCode  5 Jupiter, 6 Saturn, 7 Uranus, 8 Neptune, 9 Pluto, 12 or 14 the table
    ///                    that Eris (row 0) and Haumea (rows 1, 2) share
    /// \param row         index in that table, from 0
    /// \param out         as in `GetSatVector`
    /// \return 0; 111 for a system or row that does not exist; -1 or -1000 of `KepElla`
    ///
    /// The velocity is that of the osculating ellipse (mean motion from GM and a): the
    /// precession is not differentiated.
    int EvalMeanElements(int systemCode, int day, double fraction, int row,
                         unsigned char velocityWanted, double* out) const;

    /// The GM of one table row [au^3/day^2], -1.0 for a row that does not exist.
    double MeanElementsGM(int systemCode, int row) const;
};

/// Dysnomia (moon 1). Its row has a mean motion of 0.94 of what follows from its GM and
/// semi-major axis: the velocity, which follows from those, is 6 per cent faster than the
/// position moves.
class SOLSYS_API ErisSat final : public PetitSat {
  public:
    ErisSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Hi'iaka and Namaka (moons 1 and 2). `GetPrimaryGM` answers for any number.
class SOLSYS_API HaumeaSat final : public PetitSat {
  public:
    HaumeaSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Charon, Nix, Hydra, Kerberos, Styx (moons 1 to 5). Moons 2 to 5 move about the barycentre of
/// Pluto and Charon: their positions are carried to Pluto's centre, their velocities remain
/// barycentric. `GetPrimaryGM` answers for moons 1 to 3 only.
class SOLSYS_API PlutoSat final : public PetitSat {
  public:
    PlutoSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Moons 1 to 80. 1 to 4: theory L1.2 (Lainey, Duriez & Vienne 2006, Astron. Astrophys. 456,
/// 783); 5, 14 to 16: precessing ellipses of the inner moons; the rest by table rows.
class SOLSYS_API JupiterSat final : public PetitSat {
  public:
    JupiterSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Moons 1 to 14. Triton (1) and the inner moons (3 to 8): precessing ellipses; Nereid (2): a
/// series of its own; 9 to 14 by table rows.
class SOLSYS_API NepSat final : public PetitSat {
  public:
    NepSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Moons 1 to 83. 1 to 8: TASS 1.7 (Vienne & Duriez 1995, Astron. Astrophys. 297, 588; Duriez &
/// Vienne 1997, Astron. Astrophys. 324, 366); 9 Phoebe: a series of its own; 12 to 14: HTC2.0
/// (Oberti & Vienne 2003, Astron. Astrophys. 397, 353); 10, 11, 15 to 18: precessing ellipses;
/// 19 to 83 by table rows.
class SOLSYS_API SaturnSat final : public PetitSat {
  public:
    SaturnSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Moons 1 to 27. 1 to 5: GUST86 (Laskar & Jacobson 1987, Astron. Astrophys. 188, 212); 6 to
/// 15: precessing ellipses; 16 to 27 by table rows.
class SOLSYS_API UraSat final : public PetitSat {
  public:
    UraSat();
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};

/// Phobos and Deimos (moons 1 and 2): Lainey, Dehant & Paetzold 2007, Astron. Astrophys. 465,
/// 1075.
class SOLSYS_API MartianSat final : public SatTheory {
  public:
    MartianSat();
    SatTheory& AsTheory() { return *this; }              ///< the object as the shared interface
    const SatTheory& AsTheory() const { return *this; }  ///< \overload
    int GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                     double* out) const override;
    double GetPrimaryGM(int moonNumber) const override;

  private:
    double primary_gm_;
};
