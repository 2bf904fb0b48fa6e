// An Earth satellite by its two lines. Those here are the first test case of the model's
// report.
#include <cstdio>

#include "solsys/element_sets.h"

int main() {
    TLEConvert satellite;
    if (satellite.Set("1 88888U          80275.98708465  .00073094  13844-3  66816-4 0    8",
                      "2 88888  72.8435 115.9689 0086731  52.6988 110.5714 16.05824518  105",
                      true) != 0) {
        const TLEFault& fault = satellite.GetFault();
        std::printf("line %d, column %d: %s\n", fault.line, fault.column,
                    TLEFaultName(fault.code));
        return 1;
    }
    std::printf("a revolution takes %.2f minutes\n", satellite.GetPeriod());
    for (const double minutes : {0.0, 360.0, 720.0, 1080.0, 1440.0}) {
        double state[6];  // true equator, mean equinox of date [km, km/s]
        if (satellite.GetState(minutes, state) != TLE_OK) return 1;
        std::printf("%6.0f min  x %9.2f  y %9.2f  z %9.2f km\n", minutes, state[0], state[1],
                    state[2]);
    }
}
