/// \file
/// Planetary and lunar states from a JPL development-ephemeris (DE) binary file.
///
/// The file is mapped read-only and shared by the whole process; each model keeps a small
/// evaluation state of its own. Any DE file in the usual little-endian binary layout serves
/// (DE405, DE406, DE430, DE440, DE441 ...), of any length.
///
/// Source: Newhall, Standish & Williams 1983, Astron. Astrophys. 125, 150 (the series);
/// Newhall 1989, Celest. Mech. 45, 305 (their evaluation).
#pragma once

#include <cstdint>
#include <memory>

#include "solsys/export.h"

/// The header of a DE file.
struct DEHeader {
    double start_jd = 0;    ///< first instant covered, Julian date TDB
    double end_jd = 0;      ///< last instant covered, Julian date TDB
    double span = 0;        ///< length of a data record [day]
    double au_km = 0;       ///< astronomical unit [km]
    double emrat = 0;       ///< mass of the Earth over mass of the Moon
    std::int32_t ncon = 0;  ///< number of constants
    /// Per row (Mercury, Venus, Earth-Moon barycentre, Mars, Jupiter, Saturn, Uranus, Neptune,
    /// Pluto, geocentric Moon, Sun, nutations): 1-based offset of the first coefficient in a
    /// record, coefficients per component, sub-intervals per record.
    std::int32_t pointers[12][3] = {};
    std::int32_t de_number = 0;
    std::int32_t libration_pointers[3] = {};
    std::int32_t mantle_pointers[3] = {};
    std::int32_t tt_tdb_pointers[3] = {};
    std::int32_t ncoeff = 0;                    ///< doubles per record, its two dates included
    std::unique_ptr<char[]> constant_names;     ///< left empty by DE_Ephemeris::readHeader
    std::unique_ptr<double[]> constant_values;  ///< left empty by DE_Ephemeris::readHeader
};

/// What one user of the file (one model, one thread) keeps between evaluations: the place in
/// the file, the Chebyshev polynomials of the last normalised time and the states of the Sun
/// and the Moon at the last instant. Starts as declared; copy and reset freely. It is one of
/// the owners of the mapped file that it last evaluated.
struct DE_EvalState {
    /// A place in the file, exactly: the instant of a cached state, when it was given in two
    /// parts that were never added.
    struct Exact {
        const double* record = nullptr;  ///< the record
        double within = -1;              ///< position in it, 0 to 1
    };

    double record_time = 0;            ///< (t - start)/span: record number and position in it
    const double* record = nullptr;    ///< current record in the mapped file
    double sun_time = -1e38;           ///< Julian date of the cached Sun
    double moon_time = -1e38;          ///< Julian date of the cached Moon
    std::int32_t sun_level = 0;        ///< 0 position only, 1 with velocity
    std::int32_t moon_level = 0;       ///< likewise
    double sun[6] = {};                ///< barycentric Sun [au, au/day]
    double moon[6] = {};               ///< geocentric Moon [au, au/day]
    std::int16_t np = 2;               ///< polynomials valid in pc
    std::int16_t nv = 3;               ///< polynomials valid in vc
    double pc[20] = {1, 0};            ///< Chebyshev polynomials; pc[1] is the normalised time
    double vc[20] = {0, 1};            ///< their derivatives by the normalised time
    double tc = 0;                     ///< normalised time in the sub-interval, -1 to +1
    double two_tc = 0;                 ///< 2 tc
    std::uint32_t generation = 0;      ///< which opened file the cached values belong to
    Exact exact_sun;                   ///< when the cached Sun is for, if not sun_time
    Exact exact_moon;                  ///< when the cached Moon is for, if not moon_time
    std::shared_ptr<const void> file;  ///< the file of `generation`, kept mapped
};

/// The process's DE file. Evaluations with distinct states may run on distinct threads, also
/// while another thread opens or replaces the file. Opening, clearing and replacing take turns;
/// `clear` needs evaluations to be over.
///
/// On Linux a file that another program cuts short while it is mapped ends the process (SIGBUS)
/// when a record behind the cut is read: replace a file by writing a new one beside it and
/// renaming, which leaves the mapped one whole, then call `replaceEphemeris`. Windows refuses
/// to shorten a mapped file.
class DE_Ephemeris {
  public:
    /// Maps a DE file, unless one is mapped already (which is then kept, and true answered).
    ///
    /// \param path  UTF-8. A DE file; or a folder, of whose DE files the one with the longest
    ///              span is taken (the first by name of equal ones). When this gives nothing
    ///              (or is empty or null) the work folder's `de441pc/binm5000-p10000.408`, or
    ///              `de441pc/binp0999-3000.406` beside it, is tried.
    /// \return true when a file is mapped. If the file finally chosen does not exist, the debug
    ///         text is "Ephemeris file not found:\n" and its path; if it cannot be mapped,
    ///         "Ephemeris mapping error: 0x%x (%d)" with the system's error number.
    SOLSYS_API static bool open(const char* path);

    /// Unmaps and closes the file at once; evaluations then answer -1. None may be running.
    SOLSYS_API static void clear();

    /// The span covered by the last file opened: two adjacent Julian dates TDB, start and end;
    /// zeros before the first. The same array at every call; opening writes it, so read it in
    /// the thread that opens.
    SOLSYS_API static double* getTimeRange();

    /// Closes the file and opens another as `open` does. Evaluations that begin meanwhile wait,
    /// and afterwards serve nothing of the old file. One that is running ends on the old file,
    /// which stays mapped until every evaluation state that has used it has been used again,
    /// reset or destroyed. Takes 0.1 s at least.
    ///
    /// \param path  as for `open`
    /// \return true when a file is mapped; false leaves none
    SOLSYS_API static bool replaceEphemeris(const char* path);

    /// The state of a body.
    ///
    /// \param state     the caller's evaluation state
    /// \param day       day number of the instant, TDB
    /// \param fraction  fraction of a day of the instant, TDB
    /// \param body      1 Mercury, 2 Venus, 3 Earth, 4 Mars, 5 Jupiter, 6 Saturn, 7 Uranus,
    ///                  8 Neptune, 9 Pluto: heliocentric; 10 Moon: geocentric; 11 Sun:
    ///                  barycentric
    /// \param velocities  0: position only; otherwise with velocity
    /// \param[out] out  3 or 6 values [au, au/day], equator of the file (ICRF from DE400 on)
    /// \return 0; or -1, with out untouched, when no file is mapped, the instant is outside the
    ///         file's range (or after its last record, should the range end within a record) or
    ///         not a number, or there is no such body.
    ///
    /// The instant is formed as one double, whose resolution (40 microseconds today) limits
    /// positions: the Moon 2.5e-9 rad as seen from the Earth, 2e-11 au for Mercury, less for
    /// the others. Takes 60 to 90 ns.
    SOLSYS_API static int getState(DE_EvalState& state, int day, double fraction, short body,
                                   short velocities, double* out);

    /// Reads and checks a DE file's header. Null for whatever is not a DE file that can be
    /// evaluated safely: every number that later serves as a size, an index or a divisor has
    /// been verified against the file's length, and the record span is 0.001 day at least.
    ///
    /// \param path  UTF-8; null counts as empty
    /// \return the header, its two buffers empty
    SOLSYS_API static std::unique_ptr<DEHeader> readHeader(const char* path);

    /// Evaluates the series of one body at state.record_time, in the units of `getState`.
    ///
    /// \param state         its polynomials are reused while the normalised time stays the same
    /// \param coefficients  the body's block in the current record: nsub sub-intervals of three
    ///                      components of ncoef coefficients [km]
    /// \param ncoef         coefficients per component, 2 to 20
    /// \param nsub          sub-intervals per record, at least 1
    /// \param velocities    0: position only; otherwise with velocity
    /// \param[out] out      3 or 6 values [au, au/day]
    SOLSYS_API static void interpolate(DE_EvalState& state, const double* coefficients,
                                       int ncoef, int nsub, int velocities, double* out);
};
