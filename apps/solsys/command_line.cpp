#include "apps/solsys/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "apps/solsys/failure.h"
#include "apps/solsys/shell_help.h"
#include "solsys/sky/names.h"

namespace app {
namespace {

std::string refuse_empty(const std::string& text) {
    return text.empty() ? "the value is empty" : "";
}

// Lines of the help, short enough for a terminal beside the names of the options.
std::string wrapped(const std::string& text) {
    constexpr std::size_t kWidth = 66;
    std::string out;
    std::size_t column = 0;
    std::istringstream words(text);
    for (std::string word; words >> word; column += word.size() + 1) {
        const bool full = column > 0 && column + word.size() > kWidth;
        if (column > 0) out += full ? '\n' : ' ';
        if (full) column = 0;
        out += word;
    }
    return out;
}

CLI::Validator in_range(Range range) {
    return CLI::Validator(
        [range](std::string& text) {
            double value = 0;
            if (CLI::detail::lexical_cast(text, value) && value >= range.least &&
                value <= range.most)
                return std::string();
            return fmt::format("'{}' is no number from {} to {}", text, range.least,
                               range.most);
        },
        std::string());
}

std::string with_default(const std::string& help, const std::string& value) {
    return fmt::format("{} (without: {})", help, value);
}

// "help", "help sky" and words that are no subcommand.
void mind_first_word(const std::vector<std::string>& names, std::vector<std::string>& words) {
    if (words.empty()) {
        words = {"--help"};
        return;
    }
    if (words.front() == "help") {
        words.erase(words.begin());
        words.resize(std::min<std::size_t>(words.size(), 1));
        words.emplace_back("--help");
    }
    if (words.front().starts_with('-')) return;
    if (std::find(names.begin(), names.end(), words.front()) != names.end()) return;
    const std::string perhaps = solsys::sky::suggestion(words.front(), names);
    throw BadInput(fmt::format("no command '{}': {}", words.front(),
                               perhaps.empty() ? "see solsys --help" : perhaps));
}

// What a subcommand did not know what to do with, and what was meant perhaps.
std::string unknown_word(const CLI::App& parser) {
    const CLI::App& command = *parser.get_subcommands().front();
    // What comes after "--" is left to the parser above.
    const std::vector<std::string> left = parser.remaining(true);
    const std::string word = left.empty() ? "--" : left.front();
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    const std::string perhaps = solsys::sky::suggestion(word, names);
    return fmt::format(
        "'{}' is no option of {}: {}", word, command.get_name(),
        perhaps.empty() ? "see solsys " + command.get_name() + " --help" : perhaps);
}

}  // namespace

void Command::word(const std::string& name, std::string& value, const std::string& help) {
    parser_->add_option(name, value, wrapped(help))->required()->check(refuse_empty);
}

void Command::words(const std::string& name, std::vector<std::string>& values,
                    const std::string& help, int least, int most) {
    CLI::Option* const option = parser_->add_option(name, values, wrapped(help));
    option->required(least > 0)->check(refuse_empty);
    if (most > 0) option->expected(least, most);
}

void Command::text(const std::string& name, std::optional<std::string>& value,
                   const std::string& help) {
    parser_->add_option(name, value, wrapped(help))->check(refuse_empty);
}

void Command::text(const std::string& name, std::string& value, const std::string& help) {
    parser_->add_option(name, value, wrapped(with_default(help, value)))->check(refuse_empty);
}

void Command::number(const std::string& name, double& value, Range range,
                     const std::string& help) {
    parser_->add_option(name, value, wrapped(with_default(help, fmt::format("{}", value))))
        ->check(in_range(range))
        ->type_name("NUMBER");
}

void Command::number(const std::string& name, std::optional<double>& value, Range range,
                     const std::string& help) {
    parser_->add_option(name, value, wrapped(help))
        ->check(in_range(range))
        ->type_name("NUMBER");
}

void Command::flag(const std::string& name, bool& value, const std::string& help) {
    parser_->add_flag(name, value, wrapped(help));
}

void Command::footer(const std::string& text) { parser_->footer(text); }

void Command::run(std::function<void()> what) { parser_->callback(std::move(what)); }

CommandLine::CommandLine(const std::string& what, const std::string& footer,
                         const std::string& version, const std::string& sources)
    : parser_(std::make_unique<CLI::App>(what, "solsys")), version_(version) {
    parser_->set_version_flag("--version", version + '\n' + sources);
    parser_->require_subcommand(1);
    // A leading slash is a path's on every system, never an option.
    parser_->allow_windows_style_options(false);
    parser_->footer(footer);
}

CommandLine::~CommandLine() = default;

Command CommandLine::add(const std::string& name, const std::string& what) {
    return Command(*parser_->add_subcommand(name, what));
}

std::vector<std::string> CommandLine::names() const {
    std::vector<std::string> names;
    for (const CLI::App* command : std::as_const(*parser_).get_subcommands(nullptr))
        names.push_back(command->get_name());
    return names;
}

std::string CommandLine::manual() const { return manual_page(*parser_, version_); }

std::string CommandLine::completions(const std::string& shell) const {
    return app::completions(*parser_, shell);
}

void CommandLine::run(std::vector<std::string> words) {
    mind_first_word(names(), words);
    // The parser takes them from the end.
    std::reverse(words.begin(), words.end());
    try {
        parser_->parse(std::move(words));
    } catch (const CLI::Success& call) {
        parser_->exit(call);
    } catch (const CLI::ExtrasError&) {
        throw BadInput(unknown_word(*parser_));
    } catch (const CLI::ParseError& error) {
        throw BadInput(std::string(error.what()) + " (see solsys --help)");
    }
}

}  // namespace app
