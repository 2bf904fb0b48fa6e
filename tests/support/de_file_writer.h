// Small DE files made to measure, well-formed unless a test says otherwise.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

namespace de_file {

// Bytes from the start of the file.
constexpr std::size_t kStart = 2652, kEnd = 2660, kSpan = 2668, kNcon = 2676, kAu = 2680,
                      kEmrat = 2688, kPointers = 2696, kDeNumber = 2840, kLibrations = 2844,
                      kFurtherNames = 2856;

struct Layout {
    double start = 2451536.5, end = 2451632.5, span = 32.0;
    double au_km = 149597870.691, emrat = 81.30056;
    std::int32_t ncon = 156, de_number = 405;
    // Terms and sub-intervals of the eleven bodies and the nutations; their blocks follow each
    // other.
    std::array<std::array<std::int32_t, 2>, 12> series{{{5, 4},
                                                        {4, 2},
                                                        {5, 2},
                                                        {4, 1},
                                                        {3, 1},
                                                        {3, 1},
                                                        {2, 1},
                                                        {2, 1},
                                                        {2, 1},
                                                        {5, 8},
                                                        {4, 2},
                                                        {0, 0}}};
    std::int32_t padding = 0;  // unused doubles at the end of each record
    std::string title = "Small ephemeris for tests";
    // Coefficient [km] of a body (1 to 11) in a record, sub-interval, component and degree.
    std::function<double(int body, int record, int sub, int axis, int degree)> coefficient =
        [](int body, int record, int sub, int axis, int degree) {
            return 1e6 * body + 1e5 * record + 1e4 * sub + 1e3 * axis + 10.0 * degree;
        };

    [[nodiscard]] int records() const { return static_cast<int>((end - start) / span); }
    [[nodiscard]] std::int32_t offset(int row) const {
        std::int32_t next = 3;
        for (int i = 0; i < row; ++i) next += 3 * series[i][0] * series[i][1];
        return next;
    }
    // Doubles per record: dates, coefficients and padding, and never too few for the header.
    [[nodiscard]] std::int32_t ncoeff() const {
        const std::int32_t further = ncon > 400 ? 6 * (ncon - 400) : 0;
        const std::int32_t header = (static_cast<int>(kFurtherNames) + further + 24 + 7) / 8;
        const std::int32_t needed = offset(12) - 1 + padding;
        return needed > header ? needed : header;
    }
};

template <class T>
void put(std::string& bytes, std::size_t at, T value) {
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

inline std::string titles(const std::string& name, double start, double end) {
    char text[253];
    std::snprintf(text, sizeof text,
                  "%-84.84sStart Epoch: JED=%12.1f%51sFinal Epoch: JED=%12.1f%51s",
                  name.c_str(), start, "", end, "");
    std::string padded(text);
    padded.resize(252, ' ');
    return padded;
}

inline std::string bytes(const Layout& layout) {
    const std::size_t record = static_cast<std::size_t>(layout.ncoeff()) * 8;
    std::string file(record * static_cast<std::size_t>(layout.records() + 2), '\0');
    file.replace(0, 252, titles(layout.title, layout.start, layout.end));
    put(file, kStart, layout.start);
    put(file, kEnd, layout.end);
    put(file, kSpan, layout.span);
    put(file, kNcon, layout.ncon);
    put(file, kAu, layout.au_km);
    put(file, kEmrat, layout.emrat);
    put(file, kDeNumber, layout.de_number);
    for (int row = 0; row < 12; ++row) {
        const std::size_t at = kPointers + 12 * static_cast<std::size_t>(row);
        put(file, at, layout.offset(row));
        put(file, at + 4, layout.series[row][0]);
        put(file, at + 8, layout.series[row][1]);
    }
    for (int n = 0; n < layout.records(); ++n) {
        const std::size_t base = record * static_cast<std::size_t>(n + 2);
        put(file, base, layout.start + n * layout.span);
        put(file, base + 8, layout.start + (n + 1) * layout.span);
        for (int body = 1; body <= 11; ++body) {
            const auto [terms, subs] = layout.series[body - 1];
            std::size_t at = base + 8 * static_cast<std::size_t>(layout.offset(body - 1) - 1);
            for (int sub = 0; sub < subs; ++sub)
                for (int axis = 0; axis < 3; ++axis)
                    for (int degree = 0; degree < terms; ++degree, at += 8)
                        put(file, at, layout.coefficient(body, n, sub, axis, degree));
        }
    }
    return file;
}

}  // namespace de_file
