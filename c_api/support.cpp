#include "c_api/support.h"

#include <array>
#include <cmath>
#include <exception>
#include <limits>
#include <new>

namespace solsys::c {
namespace {

constexpr std::size_t kLongestMessage = 512;
constexpr double kLongestSpan = 1.2e7;  // day
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// An array of the thread's, so that telling of a shortage of memory needs none.
std::array<char, kLongestMessage>& message_of_thread() noexcept {
    thread_local std::array<char, kLongestMessage> message{};
    return message;
}

// The longest beginning of at most `most` bytes that ends between characters.
std::string_view whole_characters(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text;
    const auto continues = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    };
    while (most > 0 && continues(text[most])) --most;
    return text.substr(0, most);
}

void write_at(std::string_view text, char* out, std::size_t size) {
    const std::string_view whole = whole_characters(text, size - 1);
    std::copy(whole.begin(), whole.end(), out);
    out[whole.size()] = '\0';
}

}  // namespace

void refuse(solsys_status status, const std::string& message) {
    throw Refusal{status, message};
}

void set_message(std::string_view message) noexcept {
    auto& out = message_of_thread();
    write_at(message, out.data(), out.size());
}

solsys_status status_of_exception() noexcept {
    try {
        throw;
    } catch (const Refusal& refusal) {
        set_message(refusal.message);
        return refusal.status;
    } catch (const std::bad_alloc&) {
        set_message("out of memory");
        return SOLSYS_OUT_OF_MEMORY;
    } catch (const std::exception& other) {
        set_message(other.what());
        return SOLSYS_INTERNAL_ERROR;
    } catch (...) {
        set_message("unknown error");
        return SOLSYS_INTERNAL_ERROR;
    }
}

std::string_view text(const char* text, const char* name) {
    given(text, name);
    return text;
}

void write(std::string_view text, char* buffer, std::size_t size) {
    given(buffer, "buffer");
    if (size == 0) refuse(SOLSYS_BAD_ARGUMENT, "size: no room for the text's end");
    write_at(text, buffer, size);
}

sky::Instant instant(solsys_instant t, const char* name) {
    finite(t.fraction, name);
    if (!(std::fabs(t.day + t.fraction) < kLargestDay))
        refuse(SOLSYS_BAD_ARGUMENT, std::string(name) + ": beyond 2e9 days");
    return sky::Instant::from_utc(sky::JulianDate{t.day, t.fraction});
}

sky::Span span_of(solsys_instant from, solsys_instant to) {
    const sky::Span span{instant(from, "from"), instant(to, "to")};
    if (!(span.days() <= kLongestSpan))
        refuse(SOLSYS_BAD_ARGUMENT, "to: farther from the start than any ephemeris is long");
    return span;
}

solsys_instant c_instant(const sky::Instant& t) { return {t.utc().day, t.utc().fraction}; }

solsys_instant c_instant(const std::optional<sky::Instant>& t) {
    return t ? c_instant(*t) : solsys_instant{0, kNone};
}

sky::Instant near_instant(const solsys_instant* near) {
    return near != nullptr ? instant(*near, "near") : sky::Instant();
}

double number(const std::optional<double>& x) { return x.value_or(kNone); }

double finite(double x, const char* name) {
    if (!std::isfinite(x)) refuse(SOLSYS_BAD_ARGUMENT, std::string(name) + ": not finite");
    return x;
}

sky::Site site(const solsys_site* in, const char* name) {
    solsys_site record = take(in, name);
    if (!(std::fabs(record.latitude_deg) <= 90))
        refuse(SOLSYS_BAD_ARGUMENT,
               std::string(name) + ": its latitude is not within 90 degrees");
    for (const double x : {record.longitude_deg, record.height_m, record.above_horizon_m})
        finite(x, name);
    record.name[sizeof record.name - 1] = '\0';
    record.zone[sizeof record.zone - 1] = '\0';
    record.country[sizeof record.country - 1] = '\0';
    sky::Site site{record.name,     record.latitude_deg,    record.longitude_deg,
                   record.height_m, record.above_horizon_m, record.zone,
                   record.country};
    if (site.zone.empty()) site.zone = "UTC";
    return site;
}

void refuse_if_stopped(const solsys_control* control) {
    if (control != nullptr && control->control.stopped())
        refuse(SOLSYS_STOPPED, "stopped by its control");
}

}  // namespace solsys::c

const char* solsys_last_message(void) { return solsys::c::message_of_thread().data(); }
