/// How a command stands on the command line and what it does. Relies on nothing of the library that reads the line, so
/// that help, manual pages and completions are made of the same words.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zek::tool {

/// What a command takes from the command line. Each place must live as long as the command runs, and keeps what it
/// holds where the line says nothing. `names` are those of an option, such as "-o,--output"; `type` is what its value
/// is called in the help.
class Words {
public:
    virtual ~Words() = default;

    /// Files to read that stand without an option: one, or one and more, or any number. A name of - is standard input,
    /// which can be read once, so the line may have it for one of them all.
    virtual void File(const std::string& type, std::string& place, const std::string& help) = 0;
    virtual void Files(const std::string& type, std::vector<std::string>& place, const std::string& help) = 0;
    virtual void AnyFiles(const std::string& type, std::vector<std::string>& place, const std::string& help) = 0;
    /// A file that may be left out; then its name is empty.
    virtual void OptionalFile(const std::string& type, std::string& place, const std::string& help) = 0;
    /// A folder that stands without an option, and an option with folders; - is none.
    virtual void Folder(const std::string& type, std::string& place, const std::string& help) = 0;
    virtual void FolderOptions(const std::string& names, const std::string& type, std::vector<std::string>& place,
                               const std::string& help) = 0;
    /// Codes of findings that stand without an option, any number.
    virtual void AnyCodes(const std::string& type, std::vector<std::string>& place, const std::string& help) = 0;
    /// An option with a code of a finding or the other word, if there is one, that may be given several times; `take`
    /// as below.
    virtual void EachCode(const std::string& names, const std::string& type, const std::string& other,
                          const std::function<void(const std::string&)>& take, const std::string& help) = 0;
    /// What is no file and stands without an option.
    virtual void Argument(const std::string& type, std::string& place, const std::string& help) = 0;
    /// An option whose value is the name of a file or folder to write.
    virtual void FileOption(const std::string& names, const std::string& type, std::string& place,
                            const std::string& help) = 0;
    /// An option with a number from 1 on.
    virtual void Count(const std::string& names, const std::string& type, std::size_t& place,
                       const std::string& help) = 0;
    /// An option with any text; the second may be given several times.
    virtual void Text(const std::string& names, const std::string& type, std::string& place,
                      const std::string& help) = 0;
    virtual void Texts(const std::string& names, const std::string& type, std::vector<std::string>& place,
                       const std::string& help) = 0;
    /// An option whose value is one of these words.
    virtual void Choice(const std::string& names, const std::string& type, const std::vector<std::string>& words,
                        std::string& place, const std::string& help) = 0;
    /// An option with any text, the empty one too.
    virtual void OptionalText(const std::string& names, const std::string& type, std::optional<std::string>& place,
                              const std::string& help) = 0;
    /// An option that may be given several times; `take` gets each value in the order of the line and may throw
    /// Failure.
    virtual void Each(const std::string& names, const std::string& type,
                      const std::function<void(const std::string&)>& take, const std::string& help) = 0;
    virtual void Flag(const std::string& names, bool& place, const std::string& help) = 0;
};

/// Does the work; gives the exit code or throws Failure.
using Run = std::function<int()>;

/// What each exit code says of a command, by the code; null for one that it never has.
using ExitCodes = std::array<const char*, 4>;

constexpr char kDone[] = "fine";
constexpr char kWrongLineOrFile[] = "the command line is wrong, or a file cannot be read or written";
constexpr char kNotValid[] = "a file is not a valid image";

/// A variable of the environment.
struct Variable {
    std::string name;
    std::string about;
};

struct CommandSpec {
    const char* name;
    const char* about;    ///< one line
    std::string example;  ///< "Example:", then what else there is to say (help_text.h)
    /// Names what the command takes; what it gives then runs with what the line said.
    Run (*prepare)(Words& words);
    ExitCodes exits;
    std::vector<Variable> environment = {};  ///< what counts for it
};

/// What the help of `zek` itself says: one line, "Example:" with the rest, and what holds for all commands.
extern const char* const kAboutZek;
extern const char* const kExampleZek;
extern const ExitCodes kExitCodesZek;

/// In the order of the help. Each is defined beside what it does.
const std::vector<CommandSpec>& Commands();

extern const CommandSpec kCompileCommand;
extern const CommandSpec kCheckCommand;
extern const CommandSpec kExplainCommand;
extern const CommandSpec kVerifyCommand;
extern const CommandSpec kDumpCommand;
extern const CommandSpec kTreeCommand;
extern const CommandSpec kGetCommand;
extern const CommandSpec kOriginCommand;
extern const CommandSpec kDiffCommand;
extern const CommandSpec kMapCommand;
extern const CommandSpec kFmtCommand;
extern const CommandSpec kNewCommand;
extern const CommandSpec kDecompileCommand;
extern const CommandSpec kLintCommand;

}  // namespace zek::tool
