/// \file
/// The objects of a model: one per built-in body, computing and caching its own state.
#pragma once

#include <cstddef>
#include <cstdint>

#include "solsys/body_rotation.h"
#include "solsys/export.h"
#include "solsys/kepler.h"
#include "solsys/magnitudes.h"

class Integrator;
class SatTheory;
struct DE_EvalState;

/// Status codes of the object and theory functions.
enum : int {
    SS_OK = 0,        ///< success
    SS_UNKNOWN = 111  ///< not covered, or not computable at the instant
};

/// Geocentric position of the Moon without an ephemeris, J2000 equator.
///
/// \param day, fraction  instant, TDB [day]
/// \param velocity       whether the velocity is wanted too
/// \param[out] out       3 or 6 values [au, au/day]
/// \return 0, or `SS_UNKNOWN` when the instant is outside the theory
using PositionCallback = int (*)(int day, double fraction, bool velocity, double* out);

/// What the catalogue knows of a body; see `GetBodyCatalogueEntry`.
struct SS_BodyData {
    std::int32_t number = 0;
    double radius_km = 0;        ///< equatorial
    double orbital_period = 0;   ///< sidereal [day]
    double rotation_period = 0;  ///< [day]; 0 unknown
    double flattening = 0;
    double gm = 0;  ///< [au^3/day^2]; 0 unknown
    double reserved = 0;
    MagnitudeFn magnitude = nullptr;
    RotationElementsFn rotation = nullptr;
};

/// A body of the solar system. States are heliocentric or relative to the parent body, on the
/// J2000 mean equator and equinox, in au and au/day; instants are TDB Julian dates, split.
/// A state is kept for the instant it was computed for (to 1 ms) as long as the same ephemeris
/// file is open, and recomputed otherwise.
/// Not thread-safe: one model, one thread.
class SOLSYS_API SS_Object {
  public:
    /// `parent` (not owned) is the body it goes round; null: none, the root of its tree.
    SS_Object(const SS_BodyData& data, SS_Object* parent);
    SS_Object(const SS_Object&) = delete;             ///< not copyable
    SS_Object& operator=(const SS_Object&) = delete;  ///< not copyable

    /// Sets the source of positions without an ephemeris; only the Moon uses one.
    virtual void SetPositionCallback(PositionCallback callback) = 0;
    /// Replaces the rotation-elements function.
    virtual void SetRotationFunction(RotationElementsFn rotation);
    /// Replaces the magnitude function.
    virtual void SetMagnitudeFunction(MagnitudeFn magnitude);
    /// Heliocentric state into `out` (3 values, or 6 with `velocity`), caches updated.
    /// \return 0, or non-zero when the body cannot be computed; `out` is then left alone.
    virtual int ComputeState(int day, double fraction, bool velocity, double* out) = 0;
    /// Pole right ascension and declination and prime-meridian angle [rad]; false when the body
    /// has no rotation elements (all three are then 0).
    virtual bool GetRotationElements(int day, double fraction, double* ra, double* dec,
                                     double* w);
    /// State relative to the parent (3 values, or 6 with `velocity`).
    /// \return 0, or `SS_UNKNOWN` when it cannot be computed.
    virtual int GetState(int day, double fraction, bool velocity, double* out);
    /// GM of the parent [au^3/day^2]; -1.0 in the base.
    virtual double GetParentGM() const;
    /// Attaches (and takes over) or, with null, destroys an integrator; the base does nothing.
    virtual void AttachIntegrator(Integrator* integrator);
    /// The attached integrator, or null.
    virtual Integrator* GetIntegrator() const;
    virtual ~SS_Object();

    /// How often a source of states of this body, or of any on the same root, has changed so
    /// far, the process's DE file included: whoever keeps states compares the count.
    std::uint32_t SourceChanges() const;

    /// Of the Sun, for the whole system: whether a kept state serves only the very instant it
    /// was computed for, as the modern reduction has it, or all those within a millisecond.
    void KeepOnlyExactInstants(bool exact) { only_exact_instants_ = exact; }

    int Number() const { return number_; }                      ///< within its type
    double RadiusKm() const { return radius_km_; }              ///< equatorial [km]
    double OrbitalPeriod() const { return orbital_period_; }    ///< sidereal [day]
    double RotationPeriod() const { return rotation_period_; }  ///< [day]; 0 unknown
    double Flattening() const { return flattening_; }           ///< 1 - polar / equatorial
    double GM() const { return gm_; }                           ///< [au^3/day^2]; 0 unknown
    MagnitudeFn Magnitude() const { return magnitude_; }        ///< null: none
    RotationElementsFn Rotation() const { return rotation_; }   ///< null: none
    SS_Object* Parent() const { return parent_; }               ///< null: none

  protected:
    /// Whether the cache holds the instant, at the level wanted.
    bool Cached(int day, double fraction, bool velocity) const;
    /// Takes states into the cache (3 values each, or 6 with `velocity`) and copies the
    /// heliocentric one to `out`. States that are not finite are refused with `SS_UNKNOWN`.
    int Keep(int day, double fraction, bool velocity, const double* heliocentric,
             const double* relative, double* out);
    /// Copies the kept heliocentric state (3 values, or 6) to `out`. \return 0
    int CopyCached(bool velocity, double* out) const;
    /// Tells this body and all that hang on the same root (the Sun of a model) that a source of
    /// states has changed: nothing kept is served any more.
    void SourceChanged();

    std::int32_t number_;              ///< within its type
    double radius_km_;                 ///< equatorial
    double orbital_period_;            ///< sidereal [day]
    double rotation_period_;           ///< [day]; 0 unknown
    double flattening_;                ///< 1 - polar / equatorial radius
    double gm_;                        ///< [au^3/day^2]; 0 unknown
    double cached_time_ = -1.0;        ///< Julian date of what is kept
    std::int8_t cached_level_ = -1;    ///< -1 nothing, 0 position, 1 position and velocity
    std::uint32_t cached_source_ = 0;  ///< count of source changes at that time
    double heliocentric_[6] = {};      ///< the state kept
    double default_magnitude_ = 20.0;  ///< what a body without a magnitude law shows
    MagnitudeFn magnitude_;            ///< null: none
    double reserved_;                  ///< the catalogue's reserved column
    RotationElementsFn rotation_;      ///< null: none
    SS_Object* parent_;                ///< not owned; null for the Sun
    double relative_[6] = {};          ///< the state kept, relative to the parent

  private:
    SS_Object* root_;                   // of the chain of parents: the Sun, in a model
    std::uint32_t source_changes_ = 0;  // the root's count
    bool only_exact_instants_ = false;  // the root's
    // The rotation elements of the last instant asked for.
    struct KeptRotation {
        bool valid = false;  // whether it holds an instant
        bool known = false;  // whether the body has elements there
        int day = 0;
        double fraction = 0;
        double ra = 0, dec = 0, w = 0;
    };
    KeptRotation rotation_cache_;
};

/// The Sun (the origin) or a planet: from the ephemeris, or else the built-in theory.
class SOLSYS_API SS_PlanetObject : public SS_Object {
  public:
    /// `ephemeris` (not owned) may be null: the built-in theory serves.
    SS_PlanetObject(const SS_BodyData& data, SS_Object* parent, DE_EvalState* ephemeris);
    void SetPositionCallback(PositionCallback callback) override;
    int ComputeState(int day, double fraction, bool velocity, double* out) override;
    double GetParentGM() const override;
    ~SS_PlanetObject() override;
    /// Changes the source of positions.
    void SetEphemeris(DE_EvalState* ephemeris);

  private:
    DE_EvalState* ephemeris_;
};

/// Reader of a dwarf-planet catalogue that a host may install.
class SOLSYS_API DwarfPlanetsIO {
  public:
    /// Fills heliocentric osculating elements on the J2000 ecliptic (with `q` the semi-major
    /// axis; a mean motion of 0 is derived from it) for `plnt` `number`; false when the
    /// catalogue has no such record.
    virtual bool Read(std::int32_t type, std::int32_t number, Elements* elements) = 0;
    virtual ~DwarfPlanetsIO();
};
/// The reader in force: the host's, or one that has no record.
SOLSYS_API DwarfPlanetsIO* GetReader();
/// Installs a reader (not owned; null restores the default) for models initialised afterwards.
SOLSYS_API void SetReader(DwarfPlanetsIO* reader);

/// Pluto, which comes from the ephemeris or the built-in theory as the planets do, and the
/// dwarf planets, which move on their elements; or either by an attached integrator.
class SOLSYS_API SS_DwarfPlanetObject : public SS_PlanetObject {
  public:
    /// As a planet; the elements are those of `SetElements`.
    SS_DwarfPlanetObject(const SS_BodyData& data, SS_Object* parent, DE_EvalState* ephemeris);
    int ComputeState(int day, double fraction, bool velocity, double* out) override;
    /// Starts the integrator from the elements at their epoch and takes it over. One that does
    /// not start is destroyed.
    void AttachIntegrator(Integrator* integrator) override;
    Integrator* GetIntegrator() const override;
    ~SS_DwarfPlanetObject() override;
    /// Sets up the elements: the built-in ones, then the catalogue reader's if it has any that
    /// are an ellipse.
    /// \return whether the reader had such a record
    virtual bool SetElements();

    /// Heliocentric elements, J2000 ecliptic; `q` is the semi-major axis. All zero for a body
    /// that has none.
    const Elements& GetElements() const { return elements_; }
    /// How often the attached integrator was asked.
    int IntegrationCount() const { return integrations_; }

  private:
    bool StateFromElements(double mu, int day, double fraction, bool velocity,
                           double* out) const;

    Elements elements_{};
    bool has_elements_ = false;
    Integrator* integrator_ = nullptr;  // owned
    int integrations_ = 0;
};

/// A natural satellite: its theory's planet-centred state on top of its planet's.
class SOLSYS_API SS_MoonObject : public SS_Object {
  public:
    /// The Moon. `ephemeris` (not owned) may be null: the position callback serves.
    SS_MoonObject(const SS_BodyData& data, SS_Object* parent, DE_EvalState* ephemeris);
    /// The Moon by its position callback alone.
    SS_MoonObject(const SS_BodyData& data, SS_Object* parent, std::nullptr_t);
    /// Any other satellite.
    SS_MoonObject(const SS_BodyData& data, SS_Object* parent, const SatTheory* theory);
    void SetPositionCallback(PositionCallback callback) override;
    int ComputeState(int day, double fraction, bool velocity, double* out) override;
    double GetParentGM() const override;
    ~SS_MoonObject() override;
    /// Changes the source of positions of the Moon.
    void SetEphemeris(DE_EvalState* ephemeris);

  private:
    PositionCallback callback_ = nullptr;
    DE_EvalState* ephemeris_ = nullptr;
    const SatTheory* theory_ = nullptr;
};

/// A spacecraft as an object: a state computed by a host's function.
class SOLSYS_API SS_SCObject : public SS_Object {
  public:
    /// Heliocentric state of the spacecraft; returns 0 on success.
    using StateFn = int (*)(void* context, int day, double fraction, bool velocity,
                            double* out);
    /// `state` is handed `context` at every call; null: never computable.
    SS_SCObject(const SS_BodyData& data, SS_Object* parent, StateFn state, void* context);
    void SetPositionCallback(PositionCallback callback) override;
    int ComputeState(int day, double fraction, bool velocity, double* out) override;
    ~SS_SCObject() override;

  private:
    StateFn state_;
    void* context_;
};
