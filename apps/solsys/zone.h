// Civil time zones, for showing times only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/solsys/civil_time.h"

namespace app {

// An offset "+02:00", "UTC", or the name of an IANA zone where the system keeps a zone folder.
class Zone {
  public:
    // Throws BadInput for a zone that is not known here.
    explicit Zone(const std::string& name = "UTC");

    [[nodiscard]] const std::string& name() const { return name_; }
    // Seconds east of Greenwich.
    [[nodiscard]] int offset_seconds(Utc utc) const;
    // "2026-11-21 19:03", rounded to the minute.
    [[nodiscard]] std::string date_time(Utc utc) const;
    // "2026-11-21 19:03:04".
    [[nodiscard]] std::string seconds(Utc utc) const;
    // "19:03".
    [[nodiscard]] std::string clock(Utc utc) const;
    // The midnight that starts the civil day of an instant.
    [[nodiscard]] Utc midnight(Utc utc) const;

  private:
    struct Transition {
        long long at = 0;  // seconds since 1970, UTC
        int offset = 0;
    };
    // Day of a change: the week-th weekday of the month (week 5: the last), at a local time.
    struct RuleDay {
        int month = 0, week = 0, weekday = 0, seconds = 7200;
    };
    // What holds after the last transition.
    struct Rule {
        int standard = 0, summer = 0;
        std::optional<RuleDay> begin, end;
    };

    bool read_zone_file(const std::string& path);
    bool parse_rule(const std::string& text);

    std::string name_;
    std::vector<Transition> transitions_;
    int first_offset_ = 0;
    Rule rule_;
};

}  // namespace app
