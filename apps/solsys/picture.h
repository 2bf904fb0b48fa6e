// Where pictures go: --svg FILE (or - for standard output), --png FILE, --light.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "apps/solsys/options.h"
#include "draw/palette.h"

namespace app {

struct PictureOptions {
    std::optional<std::string> svg, png;
    bool light = false;

    [[nodiscard]] bool wanted() const { return svg || png; }
    // The drawing itself goes to standard output, and nothing else.
    [[nodiscard]] bool to_output() const { return svg && *svg == "-"; }
    [[nodiscard]] const solsys::draw::Theme& theme() const {
        return solsys::draw::theme(light);
    }
};

void add_picture_options(Command& command, PictureOptions& options, const std::string& what);
// Throws BadInput for options that make no sense without a picture.
void check_picture_options(const PictureOptions& options);

// Writes what was asked for and says so on standard error. Throws BadInput when it cannot.
void write_picture(const std::string& svg, const PictureOptions& options);

// A path in UTF-8 on any system.
std::filesystem::path path_of(const std::string& utf8);
// Writes a whole file, or an SVG drawing as PNG. Throws BadInput when it cannot.
void write_file(const std::string& path, const std::string& text);
void write_png(const std::string& path, const std::string& svg);

}  // namespace app
