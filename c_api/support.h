// What every function of the C interface is made of: handles, messages, checks, conversions.
#pragma once

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "core/answer_or.h"
#include "solsys/c_api.h"
#include "solsys/sky/sky.h"

struct solsys_model {
    solsys::sky::Model model;
};
struct solsys_body {
    solsys::sky::Body body;
};
struct solsys_control {
    solsys::sky::SearchControl control;
};
struct solsys_list {
    std::variant<std::vector<solsys::sky::Body>, std::vector<solsys::sky::Rising>,
                 std::vector<solsys::sky::Passage>, std::vector<solsys::sky::Conjunction>,
                 std::vector<solsys::sky::Gathering>, std::vector<solsys::sky::Eclipse>,
                 std::vector<solsys::sky::MapCurve>, std::vector<solsys::sky::DiaryEvent>,
                 std::vector<solsys::sky::Satellite>, std::vector<solsys::sky::Pass>>
        rows;
};

namespace solsys::c {

// Julian dates are taken up to here.
inline constexpr double kLargestDay = 2e9;

// Why a call ends; thrown inside, told outside by `call`.
struct Refusal {
    solsys_status status;
    std::string message;
};
[[noreturn]] void refuse(solsys_status status, const std::string& message);

// The message of the thread.
void set_message(std::string_view message) noexcept;
// What to answer to the exception in flight.
solsys_status status_of_exception() noexcept;

// Runs the body of a function of the interface; no exception leaves it.
template <class Body>
solsys_status call(Body&& body) noexcept {
    set_message("");
    try {
        const MemoryWatch memory;
        body();
        memory.check();
        return SOLSYS_OK;
    } catch (...) {
        return status_of_exception();
    }
}

// What a pointer leads to.
template <class T>
T& given(T* pointer, const char* name) {
    if (pointer == nullptr) refuse(SOLSYS_BAD_ARGUMENT, std::string(name) + ": null");
    return *pointer;
}
// An array of the caller's; null is fine for none.
template <class T>
std::span<T> array(T* first, std::size_t count, const char* name) {
    if (count != 0) given(first, name);
    return {first, count};
}
// A handle's way out, emptied first.
template <class T>
T*& way_out(T** out) {
    T*& handle = given(out, "out");
    handle = nullptr;
    return handle;
}
// The value of a result, or its message with a status.
template <class T>
T&& value_of(sky::Result<T>&& result, solsys_status status = SOLSYS_NOT_FOUND) {
    if (!result) refuse(status, result.message());
    return std::move(*result);
}

// Texts. What does not fit is cut off between characters.
std::string_view text(const char* text, const char* name);
void write(std::string_view text, char* buffer, std::size_t size);
template <std::size_t N>
void copy(std::string_view text, char (&out)[N]) {
    write(text, out, N);
}

// Records that grow: as many bytes as the caller's version of them has. A size below that of
// the first version is none.
template <class Record>
Record take(const Record* in, const char* name) {
    if (given(in, name).size < sizeof(Record))
        refuse(SOLSYS_BAD_ARGUMENT, std::string(name) + ": its size is not set");
    Record record;
    std::memcpy(&record, in, sizeof record);
    return record;
}
template <class Record>
void put(Record record, Record* out) {
    const std::size_t size = given(out, "out").size;
    if (size < sizeof(Record)) refuse(SOLSYS_BAD_ARGUMENT, "out: its size is not set");
    record.size = size;
    std::memcpy(out, &record, sizeof record);
}

// Instants.
sky::Instant instant(solsys_instant t, const char* name = "the instant");
solsys_instant c_instant(const sky::Instant& t);
solsys_instant c_instant(const std::optional<sky::Instant>& t);  // NaN for none
// Of a search: not longer than the longest ephemeris.
sky::Span span_of(solsys_instant from, solsys_instant to);
sky::Instant near_instant(const solsys_instant* near);  // J2000 for null

double number(const std::optional<double>& x);  // NaN for none
double finite(double x, const char* name);

sky::Site site(const solsys_site* site, const char* name = "site");

// Lists.
template <class Row>
void hand_out(std::vector<Row>&& rows, solsys_list*& out) {
    out = new solsys_list{std::move(rows)};
}
template <class Row>
const std::vector<Row>& rows_of(const solsys_list* list) {
    const auto* rows = std::get_if<std::vector<Row>>(&given(list, "list").rows);
    if (rows == nullptr) refuse(SOLSYS_BAD_ARGUMENT, "list: it holds rows of another kind");
    return *rows;
}
template <class Row>
const Row& row_of(const solsys_list* list, std::size_t row) {
    const auto& rows = rows_of<Row>(list);
    if (row >= rows.size())
        refuse(SOLSYS_NOT_FOUND,
               "no row " + std::to_string(row) + " of " + std::to_string(rows.size()));
    return rows[row];
}

inline sky::SearchControl* control_of(solsys_control* control) {
    return control != nullptr ? &control->control : nullptr;
}
// After a search: what was found is handed out already.
void refuse_if_stopped(const solsys_control* control);

}  // namespace solsys::c
