#include "options.h"

#include <CLI/CLI.hpp>
#include <sstream>

#include "failure.h"
#include "printable.h"

namespace zek::tool {
namespace {

constexpr char kAbout[] = "Compiles hardware descriptions in the ZEK language and shows what their images hold.";
constexpr char kExample[] =
    "Example:\n"
    "  zek compile board.zek          check board.zek, write board.zki and board.zkd\n"
    "\n"
    "Exit codes: 0 fine, 1 the source has errors, 2 wrong command line or a file that cannot be read or written,\n"
    "3 not a valid image. Messages go to standard error.\n"
    "'zek COMMAND --help' tells more about a command.";
constexpr char kMoreHelp[] = "\nRun with --help for more information.\n";
constexpr char kCompileExample[] =
    "Example:\n"
    "  zek compile board.zek -o out/board.zki -g out/board.zkd -I common\n"
    "\n"
    "Both images are written whole or not at all; where something is wrong, those that are there stay as they are.\n"
    "An include is looked for beside the file that includes it, in the current folder, in the folders of -I in their\n"
    "order, then among the files that come with zek (zek/words.zek).";
constexpr char kCheckExample[] =
    "Example:\n"
    "  zek check boards/*.zek\n"
    "\n"
    "Each source is checked by itself. The exit code is that of the worst one.";
constexpr char kVerifyExample[] =
    "Example:\n"
    "  zek verify board.zki board.zkd\n"
    "\n"
    "Reads all of each image, compiled or debug, and says that it is ok, or what is wrong where: section and entry,\n"
    "the reason, a code for scripts, the offset in bytes. The exit code is that of the worst image. Notes count what\n"
    "is odd but valid. An IMAGE of - is standard input.";
constexpr char kDumpExample[] =
    "Example:\n"
    "  zek dump --json board.zki\n"
    "\n"
    "The image is verified first. Its kind is told from its first bytes. In JSON a text is a string where its bytes "
    "are UTF-8, and else\n"
    "an object {\"bytes\": \"HEX\"} with two hexadecimal digits for each byte. Sections come kind by kind, in file\n"
    "order.";
constexpr char kTreeExample[] =
    "Example:\n"
    "  zek tree board.zki\n"
    "\n"
    "Groups stand under their parents with their sensors, TAVRGROUPs with the sensors that they list. A debug image\n"
    "shows numbers as they were written in the source, a compiled image their values.";

/// What is wrong with the text of a number of files; empty when nothing is.
std::string WhyNoCount(const std::string& text) {
    constexpr std::size_t kMostDigits = 9;
    const bool number =
        !text.empty() && text.size() <= kMostDigits && text.find_first_not_of("0123456789") == text.npos;
    return number && text[0] != '0' ? "" : text + " is not a number from 1 to 999999999";
}

void AddSourceOptions(CLI::App& command, Options& options) {
    command
        .add_option_function<std::string>(
            "-I,--include", [&options](const std::string& folder) { options.includes.push_back(folder); },
            "Look for includes in this folder too; may be given several times")
        ->type_name("DIR")
        ->trigger_on_parse();
    command
        .add_option("--max-files", options.mostFiles,
                    "Read so many files at most for one source, each as often as it is included; default: " +
                        std::to_string(options.mostFiles))
        ->check(CLI::Validator(WhyNoCount, ""))
        ->type_name("N");
    command.add_flag("--raw", options.report.raw, "Show messages as the library sends them");
    command.add_flag("--verbose", options.report.verbose, "Show also what the library says of the reading itself");
}

CLI::App& AddCommand(CLI::App& app, Options& options, Command command, const std::string& name,
                     const std::string& about, const std::string& example) {
    CLI::App& added = *app.add_subcommand(name, about);
    added.footer(example);
    added.group("Commands");
    added.callback([&options, command] { options.command = command; });
    return added;
}

void AddCommands(CLI::App& app, Options& options) {
    CLI::App& compile = AddCommand(app, options, Command::kCompile, "compile",
                                   "Check a source and write its compiled and its debug image", kCompileExample);
    compile.add_option("SOURCE", options.files, "The source")->required()->expected(1)->type_name("");
    compile.add_option("-o,--output", options.image, "The compiled image; default: SOURCE with .zki for its extension")
        ->type_name("IMAGE");
    compile
        .add_option("-g,--debug-image", options.debugImage,
                    "The debug image; default: SOURCE with .zkd for its extension")
        ->type_name("DEBUG");
    AddSourceOptions(compile, options);

    CLI::App& check =
        AddCommand(app, options, Command::kCheck, "check", "Check sources and write nothing", kCheckExample);
    check.add_option("SOURCE", options.files, "The sources")->required()->type_name("");
    AddSourceOptions(check, options);

    CLI::App& verify = AddCommand(app, options, Command::kVerify, "verify",
                                  "Tell whether images are valid, and if not, what is wrong where", kVerifyExample);
    verify.add_option("IMAGE", options.files, "The images")->required()->type_name("");
    verify.add_flag("--notes", options.notes, "Show each note");

    CLI::App& dump =
        AddCommand(app, options, Command::kDump, "dump", "Show what a compiled or a debug image holds", kDumpExample);
    dump.add_option("IMAGE", options.files, "The image")->required()->expected(1)->type_name("");
    dump.add_flag("--json", options.json, "As JSON");

    CLI::App& tree = AddCommand(app, options, Command::kTree, "tree",
                                "Show groups, sensors and TAVRGROUPs of an image as a tree", kTreeExample);
    tree.add_option("IMAGE", options.files, "The image")->required()->expected(1)->type_name("");
}

bool HasEmptyName(const CLI::App& app, const Options& options) {
    for (const std::string& file : options.files) {
        if (file.empty()) return true;
    }
    for (const CLI::App* command : app.get_subcommands()) {
        if (options.command != Command::kCompile) continue;
        if (command->count("-o") && options.image.empty()) return true;
        if (command->count("-g") && options.debugImage.empty()) return true;
    }
    return false;
}

/// The arguments from the last to the first, as the library wants them. It takes [a,b] for a list where several names
/// may stand, so a file that is called so is named by its path.
std::vector<std::string> Arguments(int argc, char** argv) {
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        const std::string argument = argv[i];
        arguments.push_back((argument.starts_with('[') ? "./" : "") + argument);
    }
    return arguments;
}

/// What is wrong with the command line.
std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error) {
    const bool lacksCommand = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::RequiredError);
    if (!lacksCommand || !app.get_subcommands().empty()) return error.what();
    const std::vector<std::string> unknown = app.remaining();
    if (unknown.empty()) return "a command is required";
    return unknown[0].starts_with('-') ? "there is no option " + unknown[0] + ", and a command is required"
                                       : "there is no command " + unknown[0];
}

}  // namespace

CommandLine ReadCommandLine(int argc, char** argv) {
    CommandLine line;
    CLI::App app(kAbout, "zek");
    app.footer(kExample);
    app.set_version_flag("--version", std::string("zek ") + ZEK_TOOL_VERSION);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.require_subcommand(1);
    AddCommands(app, line.options);
    try {
        app.parse(Arguments(argc, argv));
        if (HasEmptyName(app, line.options)) throw CLI::ValidationError("a file name is empty");
    } catch (const CLI::ParseError& error) {
        std::ostringstream out;
        std::ostringstream err;
        // The library has exit codes of its own for everything that is wrong.
        line.code = app.exit(error, out, err) == 0 ? kFine : kUsageOrFiles;
        line.text = line.code == kFine ? out.str() : Printable("zek: " + WhatIsWrong(app, error)) + kMoreHelp;
        line.options.command = Command::kNone;
    }
    return line;
}

}  // namespace zek::tool
