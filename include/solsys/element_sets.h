/// \file
/// Mean elements of Earth satellites, as published in two lines or as orbit mean-elements
/// messages, and the model that gives them meaning.
///
/// Sources: Hoots & Roehrich 1980, Spacetrack Report No. 3; Vallado, Crawford, Hujsak & Kelso
/// 2006, AIAA 2006-6753 (the model, here with its constants of WGS-72 and in its improved
/// mode); CCSDS 502.0-B (messages).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/export.h"

/// One element set in the units of its publication. Angles in degrees, true equator and mean
/// equinox of date (TEME).
struct TLERecord {
    std::int32_t number = 0;    ///< of the catalogue, up to nine digits
    char name[64] = {};         ///< UTF-8, may be empty; longer ones are cut
    char designator[16] = {};   ///< "1998-067A"; empty: none
    char classification = 'U';  ///< U, C or S
    std::int32_t epochDay = 0;  ///< Julian date UTC: day ...
    double epochFraction = 0;   ///< ... and fraction
    double meanMotion = 0;      ///< revolutions a day
    double meanMotionDot = 0;   ///< half its first derivative [1/day^2]: carried only
    double meanMotionDDot = 0;  ///< a sixth of its second derivative [1/day^3]: carried only
    double bstar = 0;           ///< drag term [1/equatorial radius]
    double inclination = 0;     ///< 0 to 180
    double node = 0;            ///< right ascension of the ascending node
    double eccentricity = 0;    ///< from 0, below 1
    double perigee = 0;         ///< argument of perigee
    double meanAnomaly = 0;
    std::int32_t setNumber = 0;   ///< of the element set: carried only
    std::int32_t revolution = 0;  ///< at epoch: carried only
};

/// What is wrong with an element set as it is written.
enum TLEFaultCode : int {
    TLE_FAULT_NONE = 0,
    TLE_FAULT_CHARACTERS,   ///< not printable ASCII
    TLE_FAULT_LENGTH,       ///< not 69 columns, or no second line
    TLE_FAULT_LINE_NUMBER,  ///< column 1; also a line that belongs to no set
    TLE_FAULT_CHECKSUM,
    TLE_FAULT_SEPARATOR,  ///< something in a blank column
    TLE_FAULT_NUMBER,
    TLE_FAULT_CLASSIFICATION,
    TLE_FAULT_DESIGNATOR,
    TLE_FAULT_EPOCH_YEAR,
    TLE_FAULT_EPOCH_DAY,
    TLE_FAULT_DERIVATIVE,
    TLE_FAULT_DRAG,
    TLE_FAULT_EPHEMERIS_TYPE,  ///< above 0: elements of another theory
    TLE_FAULT_SET_NUMBER,
    TLE_FAULT_INCLINATION,
    TLE_FAULT_NODE,
    TLE_FAULT_ECCENTRICITY,
    TLE_FAULT_PERIGEE,
    TLE_FAULT_ANOMALY,
    TLE_FAULT_MEAN_MOTION,
    TLE_FAULT_REVOLUTION,
    TLE_FAULT_NUMBER_MISMATCH,  ///< lines of two objects
    TLE_FAULT_RANGE,            ///< well written, but no such value
    TLE_FAULT_KEY,              ///< of a message: missing, unreadable, out of range, or another
                                ///< frame, time scale or theory
    TLE_FAULT_FIELDS,           ///< of a table: not as many fields as names
    TLE_FAULT_SYNTAX            ///< no JSON from here on
};

/// Where and what.
struct TLEFault {
    std::int32_t code = TLE_FAULT_NONE;  ///< a TLEFaultCode
    /// 1 or 2 of a pair; of a text its line from 1 (of a message: that on which its object
    /// ends).
    std::int32_t line = 0;
    std::int32_t column = 0;  ///< first of the field from 1; 0: the line as a whole
    char key[24] = {};        ///< of a message
};

/// The name of a code in lower case, "number_mismatch"; "unknown" for others.
SOLSYS_API const char* TLEFaultName(int code);

/// How a state came out. 1 to 6 are the model's own.
enum TLEStatus : int {
    TLE_OK = 0,
    TLE_ECCENTRICITY = 1,  ///< below -0.001 or from 1 after drag
    TLE_MEAN_MOTION = 2,   ///< not above 0
    TLE_PERTURBED = 3,     ///< eccentricity outside [0, 1] after the Sun and the Moon
    TLE_SEMI_LATUS = 4,    ///< below 0
    TLE_DECAYED = 6,       ///< below the ground: with a state
    TLE_TIME = 7,          ///< no number, or farther than 1e7 minutes from the epoch
    TLE_NOT_FINITE = 8,    ///< the model gives no state
    TLE_NOT_SET = 9,       ///< no element set
    TLE_BAD_ELEMENTS = 10  ///< out of range, or hopeless: a perigee in the density's pole
};

/// An element set and its model.
///
/// The set is prepared once; states cost no allocation. One object, one thread: the integration
/// of a resonance goes on from where it is, which changes no answer.
class SOLSYS_API TLEConvert {
  public:
    TLEConvert();
    TLEConvert(const TLEConvert& other);             ///< a copy, its set too
    TLEConvert& operator=(const TLEConvert& other);  ///< likewise
    ~TLEConvert();

    /// Takes the two lines of a set; blanks and a carriage return at their ends are cut.
    /// Numbers of five digits, with blanks or zeros before, or of a letter and four ("A0000" is
    /// 100000; I and O are left out). Years 57 to 99 are of the 20th century, 00 to 56 of the
    /// 21st.
    /// \param anyChecksum  neither ask for column 69 nor compare it
    /// \return 0, a TLEFaultCode as `GetFault` has it, or -TLE_BAD_ELEMENTS; anything but 0
    ///         leaves the object without a set
    int Set(const char* line1, const char* line2, bool anyChecksum = false);
    /// Takes a record. \return 0 or -TLE_BAD_ELEMENTS
    int Set(const TLERecord& record);
    /// Of the last `Set` of lines.
    const TLEFault& GetFault() const;
    /// Null: no set.
    const TLERecord* GetRecord() const;
    /// Whether the period is 225 minutes or more: with Sun, Moon and resonances.
    bool IsDeepSpace() const;
    /// Of a revolution [minutes]; 0: no set.
    double GetPeriod() const;

    /// The geocentric state, J2000 equator [au, au/day], as the `TLE_` objects of a model have
    /// it. From the model's frame by the equation of the equinoxes dpsi cos(eps), nutation (IAU
    /// 1980) and precession (IAU 1976) of the instant; 1 au is 149597870.7 km.
    ///
    /// \param day, fraction  TT, Julian date; UTC is TT less the difference that `ET_UT` has
    ///                       (from 1972: 32.184 s and the leap seconds)
    /// \param[out] state     6 values; left alone without a state
    /// \return a TLEStatus
    int TLE2Vec(int day, double fraction, double* state);
    /// The model's own state: TEME of date [km, km/s], `minutes` of UTC from the epoch. Within
    /// 2e-7 km of the published verification states.
    int GetState(double minutes, double* state);
    /// The same at an instant, UTC Julian date.
    int GetStateAt(int day, double fraction, double* state);
    /// Many instants in one call, the same numbers: `states` has 6 values each, TEME [km,
    /// km/s]; those without a state are left alone. `status` may be null. \return how many have
    /// a state
    std::size_t GetStates(const double* minutes, std::size_t count, double* states,
                          unsigned char* status);

    /// Reads a text of element sets: pairs of lines, each with or without a name before, or
    /// messages as JSON (an array of objects, or one) or as CSV; blank lines and lines of #
    /// between. What cannot be read is refused set by set. Linear in the size of the text,
    /// whatever is in it.
    /// \param sets    appended to
    /// \param faults  appended to, up to 1000; may be null
    /// \return how many sets were read; 0 for a null text or a null `sets`, and when memory is
    ///         short, both vectors then being as they were
    static std::size_t Read(const char* text, std::size_t size, std::vector<TLERecord>* sets,
                            std::vector<TLEFault>* faults, bool anyChecksum = false);

  private:
    struct SOLSYS_LOCAL Impl;
    std::unique_ptr<Impl> impl_;
};

/// Element sets of many satellites: all their states at many instants, by the widest vectors of
/// the processor. Constant use from several threads is safe.
class SOLSYS_API TLECatalogue {
  public:
    TLECatalogue();
    TLECatalogue(const TLECatalogue& other);             ///< a copy of all sets
    TLECatalogue& operator=(const TLECatalogue& other);  ///< likewise
    ~TLECatalogue();

    /// \return its place from 0; -1 for elements out of range and when memory is short, and
    ///         nothing is added
    int Add(const TLERecord& record);
    void Clear();                  ///< removes all
    std::size_t GetCount() const;  ///< how many there are

    /// States of all satellites, TEME of date [km, km/s]: that of satellite s at instant i is
    /// the six values from `states[6 * (s * count + i)]`, and `status[s * count + i]` its
    /// TLEStatus; values without a state are left alone. No allocation. Rising instants cost
    /// least in resonant orbits.
    /// \param day, fraction  `count` instants, UTC Julian date
    /// \param status         may be null
    /// \return how many states there are
    std::size_t GetStates(const int* day, const double* fraction, std::size_t count,
                          double* states, unsigned char* status) const;

  private:
    struct SOLSYS_LOCAL Impl;
    std::unique_ptr<Impl> impl_;
};
