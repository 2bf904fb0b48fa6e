// Columns of numpy arrays from rows of the typed layer.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <type_traits>

#include "bindings.h"

namespace solsys::python {

// How a field of a row stands in a column: what it becomes, and the column's dtype. What is
// empty becomes NaN or NaT.
template <class T>
struct Cell;
template <>
struct Cell<double> {
    static constexpr const char* kType = "f8";
    static double of(double value) { return value; }
    static double of(const std::optional<double>& value) {
        return value.value_or(std::numeric_limits<double>::quiet_NaN());
    }
};
template <>
struct Cell<std::optional<double>> : Cell<double> {};
template <>
struct Cell<int> {
    static constexpr const char* kType = "i4";
    static std::int32_t of(int value) { return value; }
};
template <>
struct Cell<bool> {
    static constexpr const char* kType = "?";
    static std::uint8_t of(bool value) { return value ? 1 : 0; }
};
// Microseconds since 1970, as numpy counts them: 86400 s in every day.
template <>
struct Cell<sky::Instant> {
    static constexpr const char* kType = "M8[us]";
    static constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::min();
    static std::int64_t of(const sky::Instant& t) {
        constexpr std::int64_t kDay = 86'400'000'000;
        constexpr std::int64_t kEpoch = 2440587;  // and a half
        const sky::JulianDate utc = t.utc();
        if (std::abs(static_cast<std::int64_t>(utc.day)) > 100'000'000) return kNone;
        return (utc.day - kEpoch) * kDay + std::llround((utc.fraction - 0.5) * kDay);
    }
    static std::int64_t of(const std::optional<sky::Instant>& t) { return t ? of(*t) : kNone; }
};
template <>
struct Cell<std::optional<sky::Instant>> : Cell<sky::Instant> {};

// The columns of a table by their names, in order; texts are lists.
template <class Row>
class Table {
  public:
    explicit Table(const std::vector<Row>& rows) : rows_(rows) {}

    // `get` is a member, or a function of a row.
    template <class Get>
    Table& column(const char* name, Get get) {
        using Value = std::remove_cvref_t<std::invoke_result_t<Get, const Row&>>;
        if constexpr (std::is_convertible_v<Value, std::string>) {
            py::list texts;
            for (const Row& row : rows_)
                texts.append(py::str(std::string(std::invoke(get, row))));
            columns_[name] = texts;
        } else if constexpr (std::is_same_v<Value, sky::Body>) {
            return column(name, [get](const Row& row) { return std::invoke(get, row).name; });
        } else {
            using Stored = decltype(Cell<Value>::of(std::declval<Value>()));
            py::array values(py::dtype(Cell<Value>::kType),
                             std::vector<py::ssize_t>{py::ssize_t(rows_.size())});
            auto* out = static_cast<Stored*>(values.mutable_data());
            for (const Row& row : rows_) *out++ = Cell<Value>::of(std::invoke(get, row));
            columns_[name] = values;
        }
        return *this;
    }
    [[nodiscard]] py::dict dict() const { return columns_; }

  private:
    const std::vector<Row>& rows_;
    py::dict columns_;
};

}  // namespace solsys::python
