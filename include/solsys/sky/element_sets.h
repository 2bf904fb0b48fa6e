/// \file
/// Satellites of the Earth by their element sets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "solsys/element_sets.h"
#include "solsys/export.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// A satellite: its elements, and how bright it is where that is known.
struct Satellite {
    std::string name;    ///< as published, else its catalogue number
    TLERecord elements;  ///< see element_sets.h
    /// Magnitude at 1000 km, half lit (the Sun, the satellite and the observer in a right
    /// angle): -1.8 for the International Space Station.
    std::optional<double> standard_magnitude;

    /// Of the elements.
    [[nodiscard]] SOLSYS_API Instant epoch() const;
    /// Of a revolution [minutes].
    [[nodiscard]] SOLSYS_API double period_minutes() const;
};

/// What a text of element sets holds.
struct SatelliteList {
    std::vector<Satellite> satellites;  ///< in the order of the text
    std::vector<std::string> problems;  ///< sets refused and why, at most a thousand
};

/// Reads two- and three-line sets, or messages as JSON or CSV. Sets that are not as they should
/// be are refused one by one.
[[nodiscard]] SOLSYS_API SatelliteList parse_satellites(std::string_view text);
/// The same from a file (UTF-8 path, at most 1 GB). A Failure when it cannot be read or holds
/// no set.
[[nodiscard]] SOLSYS_API Result<SatelliteList> read_satellites(const std::string& path);

/// The satellite of a list by its catalogue number or name; case, accents, blanks and dashes do
/// not matter. Of several sets that with the epoch nearest to `near`. A name given in part is
/// enough where one satellite alone has it.
[[nodiscard]] SOLSYS_API Result<Satellite> find_satellite(const std::vector<Satellite>& list,
                                                          std::string_view name,
                                                          const Instant& near = {});

/// A fault in one line for people: "line 4, column 69: checksum".
[[nodiscard]] SOLSYS_API std::string text_of(const TLEFault& fault);

}  // namespace solsys::sky
