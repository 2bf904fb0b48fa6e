// A small DE file with bytes changed: it is read or refused, and what is accepted can be
// evaluated everywhere without leaving the file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

#include "solsys/de_ephemeris.h"
#include "tests/support/de_file_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string whole = de_file::bytes({});
    static const auto path = std::filesystem::temp_directory_path() / "solsys_fuzz_de.bin";
    // Nine bytes of input each: where among the header's numbers, and the eight there.
    std::string file = whole;
    for (; size >= 9; data += 9, size -= 9) {
        const std::size_t at = std::min(de_file::kStart + data[0], file.size() - 8);
        std::copy(data + 1, data + 9, file.begin() + static_cast<std::ptrdiff_t>(at));
    }
    if (size > 0) file.resize(file.size() * data[0] / 256);
    std::ofstream(path, std::ios::binary) << file;
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
