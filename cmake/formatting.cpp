// What the headers of the formatting library declare and its inline part defines, compiled once
// for every platform instead of in each file that formats a number.
#include <fmt/format-inl.h>

template fmt::detail::thousands_sep_result<char> fmt::detail::thousands_sep_impl<char>(
    fmt::detail::locale_ref);
template char fmt::detail::decimal_point_impl<char>(fmt::detail::locale_ref);
