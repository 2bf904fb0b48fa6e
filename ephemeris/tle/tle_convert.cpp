#include <optional>
#include <string_view>

#include "core/answer_or.h"
#include "ephemeris/tle/catalogue_blocks.h"
#include "ephemeris/tle/element_lines.h"
#include "ephemeris/tle/element_set.h"
#include "ephemeris/tle/element_text.h"
#include "solsys/element_sets.h"

namespace {

bool has_state(int code) { return code == TLE_OK || code == TLE_DECAYED; }

}  // namespace

struct TLEConvert::Impl {
    TLEFault fault;
    std::optional<TLERecord> record;
    std::optional<solsys::PreparedElements> set;
    solsys::ResonanceState<double> resonance{};  // goes on from the last state
};

TLEConvert::TLEConvert() : impl_(std::make_unique<Impl>()) {}
TLEConvert::TLEConvert(const TLEConvert& other) : impl_(std::make_unique<Impl>(*other.impl_)) {}
TLEConvert& TLEConvert::operator=(const TLEConvert& other) {
    *impl_ = *other.impl_;
    return *this;
}
TLEConvert::~TLEConvert() = default;

int TLEConvert::Set(const char* line1, const char* line2, bool anyChecksum) {
    *impl_ = {};
    TLERecord record;
    impl_->fault = solsys::read_element_lines(
        line1 != nullptr ? line1 : "", line2 != nullptr ? line2 : "", anyChecksum, record);
    return impl_->fault.code != TLE_FAULT_NONE ? impl_->fault.code : Set(record);
}

int TLEConvert::Set(const TLERecord& record) {
    *impl_ = {};
    impl_->set = solsys::prepared(record);
    if (!impl_->set) return -TLE_BAD_ELEMENTS;
    impl_->record = record;
    return TLE_OK;
}

const TLEFault& TLEConvert::GetFault() const { return impl_->fault; }
const TLERecord* TLEConvert::GetRecord() const {
    return impl_->record ? &*impl_->record : nullptr;
}
bool TLEConvert::IsDeepSpace() const {
    return impl_->set && impl_->set->set.kind != solsys::Sgp4Kind::near_earth;
}
double TLEConvert::GetPeriod() const { return impl_->set ? impl_->set->period_minutes() : 0; }

int TLEConvert::TLE2Vec(int day, double fraction, double* state) {
    if (!impl_->set) return TLE_NOT_SET;
    solsys::State found;
    const int code = impl_->set->j2000_state({day, fraction}, impl_->resonance, found);
    if (has_state(code)) store(found, state);
    return code;
}

int TLEConvert::GetState(double minutes, double* state) {
    if (!impl_->set) return TLE_NOT_SET;
    return impl_->set->teme_state(minutes, impl_->resonance, state);
}

int TLEConvert::GetStateAt(int day, double fraction, double* state) {
    if (!impl_->set) return TLE_NOT_SET;
    return GetState(impl_->set->minutes_at({day, fraction}), state);
}

std::size_t TLEConvert::GetStates(const double* minutes, std::size_t count, double* states,
                                  unsigned char* status) {
    if (!impl_->set || minutes == nullptr || states == nullptr) return 0;
    return solsys::states_of_set(impl_->set->set, {minutes, count}, states, status);
}

std::size_t TLEConvert::Read(const char* text, std::size_t size, std::vector<TLERecord>* sets,
                             std::vector<TLEFault>* faults, bool anyChecksum) {
    if (text == nullptr || sets == nullptr) return 0;
    const std::size_t before = sets->size();
    const std::size_t faults_before = faults != nullptr ? faults->size() : 0;
    const bool whole = solsys::answer_or(false, [&] {
        solsys::SetSink sink{sets, faults};
        solsys::read_element_text({text, size}, anyChecksum, sink);
        return true;
    });
    if (!whole) {
        sets->resize(before);
        if (faults != nullptr) faults->resize(faults_before);
    }
    return sets->size() - before;
}

struct TLECatalogue::Impl {
    solsys::CatalogueBlocks blocks;
};

TLECatalogue::TLECatalogue() : impl_(std::make_unique<Impl>()) {}
TLECatalogue::TLECatalogue(const TLECatalogue& other)
    : impl_(std::make_unique<Impl>(*other.impl_)) {}
TLECatalogue& TLECatalogue::operator=(const TLECatalogue& other) {
    *impl_ = *other.impl_;
    return *this;
}
TLECatalogue::~TLECatalogue() = default;

int TLECatalogue::Add(const TLERecord& record) {
    const auto set = solsys::prepared(record);
    if (!set) return -1;
    return solsys::answer_or(-1, [&] {
        impl_->blocks.add(set->set);
        return static_cast<int>(impl_->blocks.count()) - 1;
    });
}
void TLECatalogue::Clear() { impl_->blocks.clear(); }
std::size_t TLECatalogue::GetCount() const { return impl_->blocks.count(); }

std::size_t TLECatalogue::GetStates(const int* day, const double* fraction, std::size_t count,
                                    double* states, unsigned char* status) const {
    if (day == nullptr || fraction == nullptr || states == nullptr) return 0;
    return impl_->blocks.states({day, count}, {fraction, count}, states, status);
}
