// What subcommands declare: arguments, options, flags, and what runs when they are there.
//
// A thin face on the parser, whose header takes seconds to compile: only command_line.cpp
// includes it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace app {

// What a number may be, both ends included.
struct Range {
    double least, most;
};

// A subcommand. Whatever is handed over has to live as long as it; an empty text, a number that
// is none or out of its range end the command before it runs.
class Command {
  public:
    explicit Command(CLI::App& parser) : parser_(&parser) {}

    // Arguments by their place.
    void word(const std::string& name, std::string& value, const std::string& help);
    void words(const std::string& name, std::vector<std::string>& values,
               const std::string& help, int least = 0, int most = 0);  // 0: any number
    // "--name VALUE", or without dashes an argument that may be left out.
    void text(const std::string& name, std::optional<std::string>& value,
              const std::string& help);
    // With a value already: the help says so.
    void text(const std::string& name, std::string& value, const std::string& help);
    void number(const std::string& name, double& value, Range range, const std::string& help);
    void number(const std::string& name, std::optional<double>& value, Range range,
                const std::string& help);
    void flag(const std::string& name, bool& value, const std::string& help);

    // Notes and examples under the help.
    void footer(const std::string& text);
    void run(std::function<void()> what);

  private:
    CLI::App* parser_;
};

// The whole of it.
class CommandLine {
  public:
    // `sources`: a line below the version, of what places come from.
    CommandLine(const std::string& what, const std::string& footer, const std::string& version,
                const std::string& sources);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    Command add(const std::string& name, const std::string& what);
    // Names of the subcommands, as declared.
    [[nodiscard]] std::vector<std::string> names() const;
    // For man(1), and for the completion of words in a shell ("bash", "zsh", "fish"; empty for
    // another).
    [[nodiscard]] std::string manual() const;
    [[nodiscard]] std::string completions(const std::string& shell) const;
    // Runs the subcommand that the words ask for, or prints help or the version. Throws
    // BadInput for words that it cannot read, and what the subcommand throws.
    void run(std::vector<std::string> words);

  private:
    std::unique_ptr<CLI::App> parser_;
    std::string version_;
};

}  // namespace app
