#include "tools/console/Misspelling.h"

#include <fmt/format.h>

#include "frame/formats/NearestNames.h"

namespace kvx::tool {
namespace {

std::string Sentence(const char* kind, const std::string& word, const std::vector<std::string>& known) {
    const std::optional<std::string> similar = frame::SimilarName(word, known);
    return fmt::format("there is no {} {}{}", kind, word,
                       similar ? fmt::format(": did you mean {}?", *similar) : "; see --help");
}

std::vector<std::string> OptionNames(CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return names;
}

}  // namespace

std::optional<std::string> FindMisspelling(CLI::App& tool, const std::vector<std::string>& words) {
    CLI::App* command = &tool;
    for (const std::string& word : words) {
        if (word == "--") {
            return std::nullopt;
        }
        if (word.starts_with("--")) {
            const std::string option = word.substr(0, word.find('='));
            if (command->get_option_no_throw(option) == nullptr) {
                return Sentence("option", option, OptionNames(*command));
            }
            continue;
        }
        std::vector<std::string> names;
        for (CLI::App* known : command->get_subcommands({})) {
            names.push_back(known->get_name());
            if (names.back() == word) command = known;
        }
        const bool isCommand = !names.empty() && command->get_name() == word;
        if (!names.empty() && !isCommand) {
            return Sentence("command", word, names);
        }
    }
    return std::nullopt;
}

}  // namespace kvx::tool
