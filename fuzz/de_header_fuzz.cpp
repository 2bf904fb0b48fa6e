// Any bytes as a DE file: the header is read or refused, and what is accepted can be evaluated
// everywhere without leaving the file.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>

#include "solsys/de_ephemeris.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto path = std::filesystem::temp_directory_path() / "solsys_fuzz_de.bin";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    DE_Ephemeris::clear();
    if (!DE_Ephemeris::open(path.string().c_str())) return 0;
    const double* range = DE_Ephemeris::getTimeRange();
    DE_EvalState state;
    double out[6];
    for (const double t : {range[0], range[1], (range[0] + range[1]) / 2,
                           std::numeric_limits<double>::quiet_NaN()})
        for (short body = 0; body <= 12; ++body)
            DE_Ephemeris::getState(state, 0, t, body, 1, out);
    return 0;
}
