#include "apps/solsys/shell_help.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <vector>

namespace app {
namespace {

struct Named {
    std::string name, what;
    bool flag = false;
};

std::string one_line(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::vector<const CLI::App*> subcommands(const CLI::App& command) {
    return command.get_subcommands(nullptr);
}

// Long names; what has none is an argument by its place.
std::vector<Named> options(const CLI::App& command) {
    std::vector<Named> found;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            found.push_back({"--" + name, one_line(option->get_description()),
                             option->get_items_expected_max() == 0});
    return found;
}

// A backslash and a leading point or quote mean something to roff.
std::string roff(const std::string& text) {
    std::string out;
    bool line_begins = true;
    for (const char c : text) {
        if (line_begins && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
        line_begins = c == '\n';
    }
    return out;
}

std::string label_of(const CLI::Option& option) {
    if (option.get_positional()) return fmt::format("\\fI{}\\fR", roff(option.get_name(true)));
    const std::string name = "\\fB" + roff(option.get_name(false, true)) + "\\fR";
    if (option.get_items_expected_max() == 0) return name;
    return fmt::format("{} \\fI{}\\fR", name, roff(option.get_type_name()));
}

std::string options_in_roff(const CLI::App& command) {
    std::string out;
    for (const CLI::Option* option : command.get_options())
        if (!option->get_description().empty())
            out += fmt::format(".TP\n{}\n{}\n", label_of(*option),
                               roff(one_line(option->get_description())));
    return out;
}

// Text whose lines are to stay as they are.
std::string as_it_stands(const std::string& text) {
    return text.empty() ? "" : fmt::format(".PP\n.nf\n{}\n.fi\n", roff(text));
}

std::string names_of(const std::vector<Named>& named) {
    std::string out;
    for (const Named& one : named) out += (out.empty() ? "" : " ") + one.name;
    return out;
}

std::string for_bash(const CLI::App& command) {
    std::string cases, names;
    for (const CLI::App* sub : subcommands(command)) {
        names += sub->get_name() + " ";
        cases += fmt::format("        {}) words=\"{}\" ;;\n", sub->get_name(),
                             names_of(options(*sub)));
    }
    return fmt::format(R"(# Completion of the solsys command for bash.
_solsys() {{
    local words current=${{COMP_WORDS[COMP_CWORD]}}
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W "{0}help --help --version" -- "$current"))
        return
    fi
    case ${{COMP_WORDS[1]}} in
{1}        help) words="{0}" ;;
    esac
    case $current in
        -*) COMPREPLY=($(compgen -W "$words" -- "$current")) ;;
        *) [ "${{COMP_WORDS[1]}}" != help ] || COMPREPLY=($(compgen -W "$words" -- "$current")) ;;
    esac
}}
complete -o default -F _solsys solsys
)",
                       names, cases);
}

// Within single quotes of a shell, and within the brackets of zsh.
std::string quoted(const std::string& text, std::string_view escaped = "") {
    std::string out;
    for (const char c : text) {
        if (c == '\'')
            out += "'\\'";
        else if (escaped.find(c) != std::string_view::npos)
            out += '\\';
        out += c;
    }
    return out;
}

std::string for_zsh(const CLI::App& command) {
    std::string names, cases;
    for (const CLI::App* sub : subcommands(command)) {
        names += fmt::format("    '{}:{}'\n", sub->get_name(),
                             quoted(one_line(sub->get_description())));
        cases += fmt::format("    {})\n      _arguments", sub->get_name());
        for (const Named& option : options(*sub))
            cases +=
                fmt::format(" \\\n        '{}[{}]{}'", option.name, quoted(option.what, "[]:"),
                            option.flag ? "" : ":value:_files");
        cases += " \\\n        '*:argument:_files' ;;\n";
    }
    return fmt::format(R"(#compdef solsys
# Completion of the solsys command for zsh.
_solsys() {{
  local -a commands
  commands=(
{0}  )
  if (( CURRENT == 2 )); then
    _describe command commands
    return
  fi
  local command=$words[2]
  shift words
  (( CURRENT-- ))
  case $command in
{1}  esac
}}
_solsys "$@"
)",
                       names, cases);
}

std::string for_fish(const CLI::App& command) {
    std::string out = "# Completion of the solsys command for fish.\n";
    for (const CLI::App* sub : subcommands(command)) {
        out += fmt::format("complete -c solsys -n __fish_use_subcommand -f -a {} -d '{}'\n",
                           sub->get_name(), quoted(one_line(sub->get_description())));
        for (const Named& option : options(*sub))
            out += fmt::format(
                "complete -c solsys -n '__fish_seen_subcommand_from {}' -l {}{} "
                "-d '{}'\n",
                sub->get_name(), option.name.substr(2), option.flag ? "" : " -r",
                quoted(option.what));
    }
    return out;
}

}  // namespace

std::string manual_page(const CLI::App& command, std::string_view version) {
    std::string out = fmt::format(
        ".TH SOLSYS 1 \"\" \"{}\" \"User Commands\"\n.SH NAME\nsolsys \\- {}\n"
        ".SH SYNOPSIS\n.B solsys\n\\fICOMMAND\\fR [\\fIARGUMENT\\fR...] [\\fIOPTION\\fR...]\n"
        ".SH DESCRIPTION\n{}\n",
        version, "where everything in the sky is, when it rises, what it does",
        roff(command.get_description()));
    out += as_it_stands(command.get_footer()) + ".SH COMMANDS\n";
    for (const CLI::App* sub : subcommands(command))
        out += fmt::format(".SS solsys {}\n{}\n{}{}", roff(sub->get_name()),
                           roff(sub->get_description()), options_in_roff(*sub),
                           as_it_stands(sub->get_footer()));
    return out;
}

std::string completions(const CLI::App& command, std::string_view shell) {
    if (shell == "bash") return for_bash(command);
    if (shell == "zsh") return for_zsh(command);
    if (shell == "fish") return for_fish(command);
    return "";
}

}  // namespace app
