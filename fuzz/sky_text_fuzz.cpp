// Any text as what people type: times, steps, sites, cities, bodies, elements, zones.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "solsys/sky/sky.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace solsys::sky;
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 7) {
        case 0:
            if (const auto t = parse_time(text)) (void)t->iso();
            (void)Instant::from_iso(text);
            break;
        case 1:
            if (const auto step = parse_step(text)) (void)after_steps({}, *step, 3);
            break;
        case 2:
            if (const auto site = parse_site(text))
                if (!(std::fabs(site->latitude_deg) <= 90)) std::abort();
            break;
        case 3:
            (void)find_city(text);
            break;
        case 4:
            (void)find_bodies(text);
            break;
        case 5:
            (void)parse_elements(text);
            break;
        default:
            if (const auto zone = Zone::find_compiled(text)) (void)zone->civil({});
    }
    return 0;
}
