// Where pictures go: --svg FILE (or - for standard output), --png FILE, --light.
#pragma once

#include <optional>
#include <string>

#include "apps/solsys/options.h"
#include "draw/palette.h"
#include "draw/svg.h"

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

void add_picture_options(CLI::App& command, PictureOptions& options, const std::string& what);
// Throws BadInput for options that make no sense without a picture.
void check_picture_options(const PictureOptions& options);

// Writes what was asked for and says so on standard error. Throws BadInput when it cannot.
void write_picture(const solsys::draw::Svg& drawing, const PictureOptions& options);

}  // namespace app
