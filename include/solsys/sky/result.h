/// \file
/// A value, or the reason why there is none.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace solsys::sky {

/// Why something could not be done: one line for people, without a full stop. It names what was
/// wrong and, where that helps, shows a right one.
struct Failure {
    std::string message;  ///< UTF-8
};

/// A value, or a Failure. Used like std::optional; `message()` says why it is empty.
///
/// \code
///     const auto site = find_city("Tromso");
///     if (!site) return complain(site.message());
///     use(site->latitude_deg);
/// \endcode
template <class T>
class Result {
  public:
    /// A value.
    Result(T value) : value_(std::move(value)) {}  // NOLINT: implicit
    /// A reason why there is none.
    Result(Failure failure) : message_(std::move(failure.message)) {}  // NOLINT: implicit

    /// Whether there is a value.
    explicit operator bool() const { return value_.has_value(); }
    /// Whether there is a value.
    [[nodiscard]] bool has_value() const { return value_.has_value(); }
    /// The value; only when there is one.
    const T& operator*() const { return *value_; }
    /// The value, to be changed.
    T& operator*() { return *value_; }
    /// A member of the value; only when there is one.
    const T* operator->() const { return &*value_; }
    /// A member of the value, to be changed.
    T* operator->() { return &*value_; }
    /// The value, or another where there is none.
    [[nodiscard]] T value_or(T otherwise) const {
        return value_ ? *value_ : std::move(otherwise);
    }
    /// Empty when there is a value.
    [[nodiscard]] const std::string& message() const { return message_; }

  private:
    std::optional<T> value_;
    std::string message_;
};

}  // namespace solsys::sky
