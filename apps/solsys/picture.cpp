#include "apps/solsys/picture.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "apps/solsys/console.h"
#include "apps/solsys/failure.h"

namespace app {
namespace {

namespace fs = std::filesystem;

// A path as one word for the shell, and where the shell loses what a program says.
#ifdef _WIN32
constexpr const char* kNowhere = "NUL";
std::string shell_word(const std::string& path) { return '"' + path + '"'; }
#else
constexpr const char* kNowhere = "/dev/null";
std::string shell_word(const std::string& path) {
    std::string out = "'";
    for (const char c : path) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}
#endif

}  // namespace

fs::path path_of(const std::string& utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

void write_file(const std::string& path, const std::string& text) {
    std::ofstream file(path_of(path), std::ios::binary);
    file << text;
    if (!file.flush()) throw BadInput(fmt::format("cannot write '{}'", path));
}

// By the renderer of librsvg, the one that Linux distributions bring with their desktops.
void write_png(const std::string& path, const std::string& svg) {
    if (run_in_shell(fmt::format("rsvg-convert --version >{0} 2>{0}", kNowhere)) != 0)
        throw BadInput(
            "--png: no renderer: install rsvg-convert (package librsvg2-bin), or use --svg");
    write_file(path, {});  // before the renderer has to say that it cannot
    const std::string source = path + ".svg.tmp";
    write_file(source, svg);
    const int failed = run_in_shell(fmt::format("rsvg-convert --zoom 2 --output {} {}",
                                                shell_word(path), shell_word(source)));
    std::error_code ignored;
    fs::remove(path_of(source), ignored);
    if (failed != 0) throw BadInput(fmt::format("--png: rsvg-convert did not draw '{}'", path));
}

void add_picture_options(Command& command, PictureOptions& options, const std::string& what) {
    command.text("--svg", options.svg, what + " as SVG into this file (- for standard output)");
    command.text("--png", options.png, "The same as PNG (needs rsvg-convert)");
    command.flag("--light", options.light, "Draw on white, for paper");
}

void check_picture_options(const PictureOptions& options) {
    if (options.png == "-") throw BadInput("--png: takes a file; --svg - is standard output");
    for (const auto& [path, ending, other] :
         {std::tuple{options.svg, ".png", "--svg: '{}' is named like a PNG: use --png"},
          std::tuple{options.png, ".svg", "--png: '{}' is named like an SVG: use --svg"}})
        if (path && path->ends_with(ending))
            throw BadInput(fmt::format(fmt::runtime(other), *path));
    if (options.light && !options.wanted()) throw BadInput("--light needs --svg or --png");
}

void write_picture(const std::string& text, const PictureOptions& options) {
    if (options.to_output()) {
        fmt::print("{}", text);
    } else if (options.svg) {
        write_file(*options.svg, text);
        tell("wrote " + *options.svg);
    }
    if (options.png) {
        write_png(*options.png, text);
        tell("wrote " + *options.png);
    }
}

}  // namespace app
