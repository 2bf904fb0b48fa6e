// Packed numbers, designations and dates of the minor-planet orbit files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace solsys_io {

// The number in a packed permanent designation ("00001", "A0345", "~000z"); empty if the text
// is none. Five digits, or a letter for the ten thousands (A is 10, a is 36), or a tilde and
// four digits of base 62 from 620,000 on.
std::optional<std::uint32_t> unpack_number(std::string_view packed);

// A provisional designation in words ("J95X00A" is 1995 XA, "PLS2040" is 2040 P-L, "_QC0000"
// is 2026 CA620); empty if the text is none.
std::optional<std::string> unpack_provisional(std::string_view packed);

// Julian date of 0h of a packed date ("K134I" is 2013 April 18); empty if the text is none.
std::optional<double> unpack_date(std::string_view packed);

}  // namespace solsys_io
