#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <sstream>

#include "failure.h"
#include "help_text.h"
#include "joined_text.h"
#include "printable.h"
#include "suggestion.h"

namespace zek::tool {
namespace {

constexpr char kMoreHelp[] = "\nRun with --help for more information.\n";
/// The name of standard input and output.
constexpr char kStandard[] = "-";

/// What is wrong with the name of a folder; empty when nothing is.
std::string WhyNoFolder(const std::string& name) {
    return name == kStandard ? "- is standard input or output and no folder; a folder of that name is ./-" : "";
}

/// What is wrong with the text of a count; empty when nothing is.
std::string WhyNoCount(const std::string& text) {
    constexpr std::size_t kMostDigits = 9;
    const bool number =
        !text.empty() && text.size() <= kMostDigits && text.find_first_not_of("0123456789") == text.npos;
    return number && text[0] != '0' ? "" : text + " is not a number from 1 to 999999999";
}

/// Tells what is wrong with a text that is none of these words; empty for one of them.
std::function<std::string(std::string&)> OneOf(const std::vector<std::string>& words) {
    return [words](const std::string& text) -> std::string {
        if (std::find(words.begin(), words.end(), text) != words.end()) return {};
        return text + " is none of " + Joined(words, ", ");
    };
}

/// Stands before an argument that begins with '[': the library would take [a,b] for a list where several names may
/// stand. No argument has such a byte.
constexpr char kNoList = '\0';

std::string WithoutMarks(std::string text) {
    std::erase(text, kNoList);
    return text;
}

/// An option whose value is what stood on the line.
CLI::Option* Unmarked(CLI::Option* option) {
    const auto remove = [](std::string& text) -> std::string {
        text = WithoutMarks(text);
        return {};
    };
    // Comes before every other check.
    return option->transform(CLI::Validator(remove, ""));
}

/// The words of one command, told to the command-line library.
class CommandWords : public Words {
public:
    explicit CommandWords(CLI::App& command) : command_(command) {}

    void File(const std::string& type, std::string& place, const std::string& help) override {
        Read(Add(type, place, help))->required();
    }
    void OptionalFile(const std::string& type, std::string& place, const std::string& help) override {
        Read(Add(type, place, help));
    }
    void Files(const std::string& type, std::vector<std::string>& place, const std::string& help) override {
        Read(Add(type, place, help))->required();
    }
    void AnyFiles(const std::string& type, std::vector<std::string>& place, const std::string& help) override {
        Read(Add(type, place, help));
    }
    void Folder(const std::string& type, std::string& place, const std::string& help) override {
        written_.push_back(Add(type, place, help)->check(CLI::Validator(WhyNoFolder, ""))->required()->type_name(""));
    }
    void FolderOptions(const std::string& names, const std::string& type, std::vector<std::string>& place,
                       const std::string& help) override {
        AddTexts(names, type, place, help)->check(CLI::Validator(WhyNoFolder, ""));
    }
    void Argument(const std::string& type, std::string& place, const std::string& help) override {
        Add(type, place, help)->required()->type_name("");
    }
    void AnyCodes(const std::string& type, std::vector<std::string>& place, const std::string& help) override {
        Add(type, place, help)->type_name("");
    }
    void EachCode(const std::string& names, const std::string& type, const std::string&,
                  const std::function<void(const std::string&)>& take, const std::string& help) override {
        Each(names, type, take, help);
    }
    void FileOption(const std::string& names, const std::string& type, std::string& place,
                    const std::string& help) override {
        written_.push_back(Add(names, place, help)->type_name(type));
    }
    void Count(const std::string& names, const std::string& type, std::size_t& place,
               const std::string& help) override {
        Add(names, place, help)->check(CLI::Validator(WhyNoCount, ""))->type_name(type);
    }
    void Text(const std::string& names, const std::string& type, std::string& place, const std::string& help) override {
        Add(names, place, help)->type_name(type);
    }
    void Texts(const std::string& names, const std::string& type, std::vector<std::string>& place,
               const std::string& help) override {
        AddTexts(names, type, place, help);
    }
    void Choice(const std::string& names, const std::string& type, const std::vector<std::string>& words,
                std::string& place, const std::string& help) override {
        Add(names, place, help)->check(CLI::Validator(OneOf(words), ""))->type_name(type);
    }
    void OptionalText(const std::string& names, const std::string& type, std::optional<std::string>& place,
                      const std::string& help) override {
        AddEach(
            names, [&place](const std::string& text) { place = text; }, help)
            ->type_name(type);
    }
    void Each(const std::string& names, const std::string& type, const std::function<void(const std::string&)>& take,
              const std::string& help) override {
        AddEach(names, take, help)->type_name(type)->trigger_on_parse();
    }
    void Flag(const std::string& names, bool& place, const std::string& help) override {
        command_.add_flag(names, place, help);
    }

    /// What is wrong with the names of files; empty when nothing is.
    std::string WhyNoFiles() const {
        const std::vector<std::string> read = Given(read_);
        const std::vector<std::string> written = Given(written_);
        const std::string none;
        if (std::count(read.begin(), read.end(), none) + std::count(written.begin(), written.end(), none) > 0) {
            return "a file name is empty";
        }
        const bool twice = std::count(read.begin(), read.end(), kStandard) > 1;
        return twice ? "standard input can be read only once, and - stands for several files" : "";
    }

private:
    using Options = std::vector<CLI::Option*>;

    template <class Place>
    CLI::Option* Add(const std::string& names, Place& place, const std::string& help) {
        return Unmarked(command_.add_option(names, place, help));
    }
    CLI::Option* AddEach(const std::string& names, const std::function<void(const std::string&)>& take,
                         const std::string& help) {
        return Unmarked(command_.add_option_function<std::string>(names, take, help));
    }

    CLI::Option* Read(CLI::Option* option) {
        read_.push_back(option);
        return option->type_name("");
    }

    CLI::Option* AddTexts(const std::string& names, const std::string& type, std::vector<std::string>& place,
                          const std::string& help) {
        const auto add = [&place](const std::string& text) { place.push_back(text); };
        return AddEach(names, add, help)->type_name(type)->trigger_on_parse();
    }

    static std::vector<std::string> Given(const Options& options) {
        std::vector<std::string> given;
        for (const CLI::Option* option : options) {
            given.insert(given.end(), option->results().begin(), option->results().end());
        }
        return given;
    }

    CLI::App& command_;
    Options read_;
    Options written_;
};

/// A command as the line may give it.
struct Prepared {
    CLI::App* command;
    CommandWords words;
    Run run;
};

std::vector<std::unique_ptr<Prepared>> AddCommands(CLI::App& app) {
    std::vector<std::unique_ptr<Prepared>> all;
    for (const CommandSpec& spec : Commands()) {
        CLI::App& command = *app.add_subcommand(spec.name, spec.about);
        command.footer(HelpBelowOptions(spec.example, spec.exits));
        command.group("Commands");
        all.push_back(std::make_unique<Prepared>(Prepared{&command, CommandWords(command), {}}));
        all.back()->run = spec.prepare(all.back()->words);
    }
    return all;
}

/// The arguments from the last to the first, as the library wants them.
std::vector<std::string> Arguments(int argc, char** argv) {
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        const std::string argument = argv[i];
        arguments.push_back(argument.starts_with('[') ? kNoList + argument : argument);
    }
    return arguments;
}

std::set<std::string> CommandNames() {
    std::set<std::string> names;
    for (const CommandSpec& spec : Commands()) names.insert(spec.name);
    return names;
}

/// `help COMMAND` is COMMAND --help, `help` alone --help. The arguments come from the last to the first.
std::vector<std::string> WithoutHelpCommand(std::vector<std::string> arguments) {
    if (arguments.empty() || arguments.back() != "help") return arguments;
    arguments.pop_back();
    const bool isKnown = arguments.empty() || CommandNames().contains(arguments.back());
    if (isKnown) arguments.insert(arguments.begin(), "--help");
    return arguments;
}

/// Those of more than a letter: any letter is near any other.
std::set<std::string> OptionNames(const CLI::App& app) {
    std::set<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) names.insert("--" + name);
    }
    return names;
}

/// That there is no such command or option, and which probably was meant.
std::string ThereIsNo(const std::string& what, const std::string& written, const std::set<std::string>& names) {
    const std::optional<std::string> nearest = NearestName(written, names);
    return "there is no " + what + ' ' + written + (nearest ? "; did you mean " + *nearest + '?' : "");
}

bool IsOption(const std::string& word) { return word.size() > 1 && word[0] == '-'; }

/// What nobody takes of the command line, in words; the library may lose the -- among them.
std::vector<std::string> Surplus(const CLI::App& app) {
    std::vector<std::string> words = app.remaining();
    std::erase(words, "--");
    return words;
}

/// What is wrong with the command line `written`.
std::string WhatIsWrong(const std::vector<std::string>& written, const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    const auto isBefore = [&written](const std::string& word, const std::string& mark) {
        const auto end = std::find(written.begin(), written.end(), mark);
        return std::find(written.begin(), end, word) != end;
    };
    std::vector<std::string> surplus;
    for (const CLI::App* each : {&app, commands.empty() ? &app : commands[0]}) {
        for (const std::string& word : Surplus(*each)) {
            if (IsOption(word) && isBefore(word, "--"))
                return ThereIsNo("option", word.substr(0, word.find('=')), OptionNames(*each));
            surplus.push_back(word);
        }
    }
    if (commands.empty() && surplus.empty()) return "a command is required";
    if (commands.empty() || (!surplus.empty() && isBefore(surplus[0], commands[0]->get_name())))
        return ThereIsNo("command", surplus[0], CommandNames());
    // What is missing is told first.
    if (surplus.empty() || !dynamic_cast<const CLI::ExtrasError*>(&error)) return error.what();
    return "there is no place for " + Joined(surplus, " ");
}

}  // namespace

CommandLine ReadCommandLine(int argc, char** argv) {
    CommandLine line;
    CLI::App app(kAboutZek, "zek");
    app.footer(HelpBelowOptions(kExampleZek, kExitCodesZek));
    app.set_version_flag("--version", std::string("zek ") + ZEK_TOOL_VERSION);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.require_subcommand(1);
    const auto commands = AddCommands(app);
    try {
        app.parse(WithoutHelpCommand(Arguments(argc, argv)));
        for (const auto& prepared : commands) {
            if (!prepared->command->parsed()) continue;
            const std::string why = prepared->words.WhyNoFiles();
            if (!why.empty()) throw CLI::ValidationError(why);
            line.run = prepared->run;
        }
    } catch (const CLI::ParseError& error) {
        std::ostringstream out;
        std::ostringstream err;
        // The library has exit codes of its own for everything that is wrong.
        line.code = app.exit(error, out, err) == 0 ? kFine : kUsageOrFiles;
        line.text =
            line.code == kFine
                ? out.str()
                : Printable("zek: " + WithoutMarks(WhatIsWrong({argv + 1, argv + argc}, app, error))) + kMoreHelp;
        line.run = {};
    }
    return line;
}

}  // namespace zek::tool
