/// \file
/// Conjunctions of two bodies in right ascension or ecliptic longitude, and gatherings of three
/// or more.
///
/// Places are apparent (light time and aberration) from the Earth's centre, of date: on the
/// true equator, or on the ecliptic by way of the model's matrix `GetMtrxEq2K_EclCur`. The
/// searches walk by days and are kept simple on purpose: two conjunctions within one step of
/// each other pass unseen, and gatherings are reported at the sample that meets the limit. The
/// typed layer's searches miss none and refine both.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/astr_event.h"
#include "solsys/export.h"
#include "solsys/solar_system.h"
#include "solsys/sso_id.h"

/// A conjunction of two bodies, or a gathering of more.
struct CONJUN {
    /// A pair: the conjunction [JD UT]. A gathering: the sample's dynamical time plus Delta T
    /// once more [JD]; take 2 Delta T off for UT.
    double time = 0;
    /// A pair: angle between the apparent directions. A gathering: the largest angle of a body
    /// from the middle of all, in single precision [rad].
    double separation = 0;
    std::int32_t type1 = 0;    ///< type code of the first body asked for; 0 in a gathering
    std::int32_t number1 = 0;  ///< its number
    std::int32_t type2 = 0;    ///< type code of the second body asked for; 0 in a gathering
    std::int32_t number2 = 0;  ///< its number
};

/// Searches an interval for conjunctions.
///
/// Construct over a model, `InitSearch`, then `SearchAll`, or `SearchNext` until it answers
/// false. The model is left at the last instant evaluated and with the geocentric observer that
/// `InitSearch` gives it. Debug texts are printed by gatherings ("%f <=> %f\n", the instant and
/// the radius, at every sample) and by the destructor. One object serves one thread; `Stop` may
/// be called from any.
class SOLSYS_API CSWConjunc : public CSWAstrEv_dll {
  public:
    /// Over the host's model, which must outlive this; or, given null, over a model of its own
    /// on the ephemeris that `StarwickPath::GetEphemerisPath` names (should that fail: the
    /// debug text "Solar system not installed\n", and the searches find nothing).
    explicit CSWConjunc(CSWSolSys* model);
    ~CSWConjunc();
    CSWConjunc(const CSWConjunc&) = delete;
    CSWConjunc& operator=(const CSWConjunc&) = delete;

    /// Starts a search and empties the list.
    ///
    /// \param start, end   interval [JD UT]; Delta T at the start serves both ends. Empty or
    ///                     reversed, or not finite: nothing is found.
    /// \param objects      the bodies: two for conjunctions, three or more for gatherings. Not
    ///                     copied: it must live as long as the search. Null, none or one body:
    ///                     nothing is found.
    /// \param limit        gatherings: all bodies within this angle of their middle [rad].
    /// \param ecliptic     conjunctions in ecliptic longitude (true) or right ascension
    /// (false).
    void InitSearch(double start, double end, std::vector<SSO_ID>* objects, double limit,
                    bool ecliptic);

    /// All events of the interval from where the search stands, into the list (`GetResults`).
    /// \return how many the list holds; 0 without a model; -1, and list and place as before,
    /// when memory is short. After `Stop`: those found till then.
    int SearchAll();

    /// The next event. \return false at the end of the interval, after `Stop`, for a body that
    /// the model does not know or cannot compute, and for a null record
    ///
    /// Pairs: steps of 10 days (5 with the Moon; a tenth of it where the difference of the
    /// angles is below 0.1 rad), then false position until the difference is below 1 arcsec (10
    /// with the Moon) or the bracket below 0.1 s. A conjunction is thus timed to the
    /// arcseconds' worth of motion: half a minute for the Moon, hours for slow pairs.
    ///
    /// Gatherings: the first of the 10-day samples whose radius is smaller than that of the
    /// sample before (in the same call), at most 90 degrees and below the limit.
    bool SearchNext(CONJUN* event);

    /// The list of `SearchAll`; valid until the next search.
    const std::vector<CONJUN>& GetResults() const;

    /// Ends the running search at its next step; `InitSearch` clears it. From any thread.
    void Stop();
    /// Calls a function once a step with the fraction done, 0 to 1; null for none.
    void SetProgressHandler(void (*progress)(double fraction, void* context), void* context);

  private:
    struct SOLSYS_LOCAL State;
    std::unique_ptr<State> state_;
};
