// What a month brings.
#include "solsys/sky/diary.h"

#include <cstdio>

#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const Zone utc;
    const Span month{*parse_time("2026-12-01"), *parse_time("2027-01-01")};
    DiaryOptions options;
    options.stars = false;
    options.widest_conjunction_deg = 4;
    for (const DiaryEvent& event : diary(*model, month, options))
        std::printf("%s  %s\n", utc.date_time(event.at).c_str(), event.text.c_str());
}
