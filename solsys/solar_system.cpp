// The life of a model: construction, bodies, instants, the save slot.
#include "solsys/solar_system.h"

#include <cmath>
#include <limits>
#include <new>
#include <optional>

#include "core/answer_or.h"
#include "ephemeris/de/open_file.h"
#include "ephemeris/planet_states.h"
#include "frames/nutation.h"
#include "frames/precession.h"
#include "solsys/calendar.h"
#include "solsys/catalogue_table.h"
#include "solsys/model.h"
#include "solsys/platform.h"
#include "solsys/time_scales.h"

using solsys::Instant;
using solsys::Mat3;

namespace {

// Instants closer than this are the same to the frames [day].
constexpr double kSameInstant = 1e-8;
// A zero is sought to one second [day].
constexpr double kOneSecond = 1.1574074074074073e-5;

// (433) Eros at 2000 June 5, 0 h.
constexpr Elements kEros{.q = 1.4582862,
                         .e = 0.22281396,
                         .i = 0.18900050042128208,
                         .node = 5.312988244282352,
                         .peri = 3.117914190507007,
                         .n = 0,  // the square root of:
                         .M = 2.525874597219778,
                         .epochFraction = 0,
                         .epochDay = 0};
constexpr double kErosMotionSquared = 9.541893938886165e-5;  // (rad/day)^2
constexpr double kErosGm = 2.0067522484920783e-18;           // au^3/day^2

// The instant day + fraction with its fraction in [0, 1) after Julian date 0 and in (-1, 0]
// before; nothing when it is not finite or its day is no int.
std::optional<Instant> normalised(int day, double fraction) {
    const double whole = std::trunc(day + fraction);
    if (!(whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max()))
        return std::nullopt;
    Instant t{static_cast<int>(whole), (day - whole) + fraction};
    // The sum rounds to a whole day just below it: take the day back.
    if (t.fraction < 0 && t.day > 0) {
        t.fraction += 1;
        if (t.fraction < 1) {
            --t.day;
        } else {
            t.fraction = 0;
        }
    }
    return t;
}

// Geocentric Moon of the built-in theory.
int built_in_moon(int day, double fraction, bool velocity, double* out) {
    solsys::State moon{};
    if (!solsys::moon_by_theory({day, fraction}, velocity, moon)) return SS_UNKNOWN;
    store(moon.r, out);
    if (velocity) store(moon.v, out + 3);
    return SS_OK;
}

template <class Theory>
bool create(std::unique_ptr<Theory>& theory) {
    if (!theory) theory.reset(new (std::nothrow) Theory);
    return theory != nullptr;
}

bool create_theories(solsys::SatelliteTheories& all) {
    return create(all.mars) && create(all.jupiter) && create(all.saturn) &&
           create(all.uranus) && create(all.neptune) && create(all.pluto) && create(all.eris) &&
           create(all.haumea);
}

const SatTheory* theory_of_planet(const solsys::SatelliteTheories& all, int planet) {
    switch (planet) {
        case 4:
            return &all.mars->AsTheory();
        case 5:
            return &all.jupiter->AsTheory();
        case 6:
            return &all.saturn->AsTheory();
        case 7:
            return &all.uranus->AsTheory();
        case 8:
            return &all.neptune->AsTheory();
        case 9:
            return &all.pluto->AsTheory();
        case 12:
            return &all.eris->AsTheory();
        case 14:
            return &all.haumea->AsTheory();
        default:
            return nullptr;
    }
}

std::unique_ptr<SS_Object> make_object(const solsys::BodyRow& row, SS_Object* parent,
                                       DE_EvalState* ephemeris,
                                       const solsys::SatelliteTheories& theories) {
    const SS_BodyData data{.number = row.number,
                           .radius_km = row.radius_km,
                           .orbital_period = row.orbital_period,
                           .rotation_period = row.rotation_period,
                           .flattening = row.flattening,
                           .gm = row.gm,
                           .reserved = 0,
                           .magnitude = row.magnitude,
                           .rotation = row.rotation};
    if (row.type == SSO_MOON) {
        if (row.number != solsys::kMoonNumber)
            return std::make_unique<SS_MoonObject>(
                data, parent, theory_of_planet(theories, row.parent_number));
        auto moon = std::make_unique<SS_MoonObject>(data, parent, ephemeris);
        moon->SetPositionCallback(built_in_moon);
        return moon;
    }
    if (row.number < 9 || row.number == 10)
        return std::make_unique<SS_PlanetObject>(data, parent, ephemeris);
    return std::make_unique<SS_DwarfPlanetObject>(data, parent, ephemeris);
}

// True if any is new.
bool create_objects(solsys::Bodies& bodies, DE_EvalState* ephemeris,
                    const solsys::SatelliteTheories& theories) {
    bool any = false;
    for (int number = solsys::kFirstBody; number > 0;
         number = solsys::next_catalogue_number(number)) {
        const solsys::BodyRow& row = *solsys::catalogue_row(number);
        const std::uint64_t key = solsys::key_of(row.type, row.number);
        if (bodies.objects.find(key) != nullptr) continue;
        SS_Object* parent = bodies.find({SSO_PLNT, row.parent_number});
        bodies.objects.insert(key, make_object(row, parent, ephemeris, theories));
        any = true;
    }
    return any;
}

// (433) Eros, for spacecraft about it.
void set_up_eros(solsys::Bodies& bodies) {
    bodies.eros = kEros;
    bodies.eros.n = std::sqrt(kErosMotionSquared);
    bodies.eros_gm = kErosGm;
    int day = 0;
    DJ(&day, &bodies.eros.epochFraction, 2000, 6, 5, 0, 0, 0.0);
    bodies.eros.epochDay = day;
}

}  // namespace

CSWSolSys::CSWSolSys() : model_(std::make_unique<Model>()) {
    ET_UT::Init(nullptr);
    Model& m = *model_;

    m.bodies.ecl2k_from_j2000 =
        solsys::rotate_x(solsys::short_nutation(solsys::kJ2000).obliquity);
    Instant b1850{};
    BJ('B', 1850, &b1850.day, &b1850.fraction);
    m.b1850_from_j2000 = solsys::precession_matrix(solsys::kJ2000, b1850);

    m.current.observer.record.body_type = SSO_PLNT;
    m.current.observer.record.body_number = 3;
    m.refresh_visible();
}

CSWSolSys::~CSWSolSys() {
    model_.reset();
    ET_UT::Finish();
}

CSWSolSys::Model& CSWSolSys::Inside() const { return *model_; }

bool CSWSolSys::InitSys(const char* path) {
    return solsys::answer_or(false, [&] {
        Model& m = *model_;
        if (!create_theories(m.theories)) return false;
        m.serve_ephemeris(m.wants_file && DE_Ephemeris::open(path));
        if (create_objects(m.bodies, m.ephemeris.get(), m.theories) && !m.ephemeris)
            m.bodies.theories_since = m.bodies.source_changes();
        if (SS_Object* sun = m.bodies.find(solsys::kSunKey))
            sun->KeepOnlyExactInstants(m.bodies.modern != nullptr);
        set_up_eros(m.bodies);
        return true;
    });
}

bool CSWSolSys::UseEphemeris(bool use) {
    return solsys::answer_or(false, [&] {
        model_->serve_ephemeris(use && solsys::de_file_is_open());
        model_->wants_file = use;
        return true;
    });
}

void CSWSolSys::Model::serve_ephemeris(bool serve) {
    if (serve == (ephemeris != nullptr)) return;
    ephemeris = serve ? std::make_unique<DE_EvalState>() : nullptr;
    hand_over_ephemeris();
}

bool CSWSolSys::HasEphemeris() const {
    return model_->ephemeris != nullptr && solsys::de_file_is_open();
}

void CSWSolSys::Model::hand_over_ephemeris() {
    reduction->file = ephemeris.get();
    for (const auto& [key, object] : bodies.objects.entries()) {
        if (solsys::type_of(key) == SSO_PLNT) {
            static_cast<SS_PlanetObject&>(*object).SetEphemeris(ephemeris.get());
        } else if (object->Number() == solsys::kMoonNumber) {
            static_cast<SS_MoonObject&>(*object).SetEphemeris(ephemeris.get());
        }
    }
    bodies.theories_since = ephemeris ? std::nullopt : bodies.source_changes();
}

bool CSWSolSys::SetTime(int day, double fraction, bool updateFrames) {
    Model& m = *model_;
    if (std::isnan(fraction)) {
        PrintDebugString("SetTime(): tj is NaN!\n");
        fraction = 0.0;
    }
    // The modern reduction takes every instant as it is: the Moon moves 0.5 mas in a
    // millisecond.
    const double same = m.bodies.modern != nullptr ? 0.0 : kSameInstant;
    if (std::fabs(days_between({day, fraction}, m.current.now)) < same) {
        // A new model stands at J2000.0 without frames.
        if (updateFrames && !m.current.has_frames) m.update_frames();
        return true;
    }
    const std::optional<Instant> t = normalised(day, fraction);
    if (!t) {
        PrintDebugString("SetTime(): instant out of range\n");
        return false;
    }
    m.current.now = *t;
    if (updateFrames) m.update_frames();
    return true;
}

bool CSWSolSys::UpdateSys(int day, double fraction) {
    const bool taken = SetTime(day, fraction, true);
    model_->update_frames();  // the instant may have come here before without its frames
    model_->derive_observer();
    return taken;
}

bool CSWSolSys::SetT3(int day, double fraction) {
    const bool taken = UpdateSys(day, fraction);
    SaveT3Data();
    // The slot keeps the instant in the caller's own split, when the model took it.
    if (std::fabs(days_between({day, fraction}, model_->current.now)) < kSameInstant)
        model_->saved.now = {day, fraction};
    return taken;
}

void CSWSolSys::SaveT3Data() {
    model_->saved = model_->current;
    model_->has_saved = true;
    model_->saved_is_stale = false;
}

void CSWSolSys::RestoreT3Data() {
    Model& m = *model_;
    if (!m.has_saved) return;
    m.current = m.saved;
    // The slot may hold the caller's own split of SetT3; the model's is the ordinary one.
    if (const auto t = normalised(m.saved.now.day, m.saved.now.fraction)) m.current.now = *t;
    m.reduction->take_frames(m.current.frames, m.current.frames_on_earth);
    m.refresh_visible();
    if (m.saved_is_stale) m.derive_anew();
}

bool CSWSolSys::GetTime(int* day, double* fraction) const {
    if (day == nullptr || fraction == nullptr) return false;
    *day = model_->current.now.day;
    *fraction = model_->current.now.fraction;
    return true;
}

double CSWSolSys::FindNewMoon(double t1, double t2, InstantFn f, void* context) {
    constexpr const char* kError = "CSWSolSys::FindNewMoon() error\n";
    if (f == nullptr) return -1.0;
    SaveT3Data();
    double f1 = f(*this, t1, context);
    double f2 = f(*this, t2, context);
    if (f1 * f2 > 0) {
        RestoreT3Data();
        PrintDebugString(kError);
        return -1.0;
    }
    do {
        const double t = (f1 * t2 - f2 * t1) / (f1 - f2);
        const double v = f(*this, t, context);
        if (v == 0) {
            t1 = t;
            break;
        }
        // An iterate that does not fall between the ends cannot be improved in double
        // precision: the zero is within a rounding of an end, and the bracket would never
        // shrink to a second. (It may come and go around the end, so it is not enough to ask
        // for equality.)
        if (!(t > t1)) break;
        if (!(t < t2)) {
            t1 = t2;
            break;
        }
        if (v * f1 > 0) {
            t1 = t, f1 = v;
        } else {
            t2 = t, f2 = v;
        }
    } while (t2 - t1 > kOneSecond);
    RestoreT3Data();
    if (t1 < 0) PrintDebugString(kError);
    return t1;
}

void CSWSolSys::SetPrecessionFunction(PrecessionFn function) {
    model_->precession = function;
    model_->forget_frames();
}

void CSWSolSys::SetNutationFunction(NutationFn function) {
    model_->nutation = function;
    model_->forget_frames();
}

solsys::FrameSet CSWSolSys::Model::frames_for(Instant t, bool on_earth) const {
    return bodies.modern != nullptr
               ? solsys::modern_frames_at(t, on_earth, precession, nutation, reduction->nodes)
               : solsys::frames_at(t, on_earth, precession, nutation);
}

void CSWSolSys::Model::update_frames() {
    const bool on_earth = current.observer.on_earth();
    const double jd = current.now.jd();
    if (current.has_frames && current.frames_on_earth == on_earth &&
        std::fabs(jd - current.frame_time) <= kSameInstant)
        return;
    current.frames = frames_for(current.now, on_earth);
    reduction->take_frames(current.frames, on_earth);
    current.has_frames = true;
    current.frame_time = jd;
    current.frames_on_earth = on_earth;
    refresh_visible();
}

void CSWSolSys::Model::forget_frames() {
    current.has_frames = false;
    saved.has_frames = false;
}

void CSWSolSys::Model::refresh_visible() {
    const solsys::FrameSet& f = current.frames;
    store(f.cur_from_j2000, visible.cur_from_j2000.data());
    store(f.ecl_from_j2000, visible.ecl_from_j2000.data());
    store(f.ecl_from_tod, visible.ecl_from_cur.data());
    store(f.mod_from_j2000, visible.precession.data());
    store(f.tod_from_mod, visible.nutation.data());
    store(current.observer.frames.body_from_horizon, visible.horizon.data());
    store(ecliptic_of(bodies), visible.ecl2k.data());
}
