#include "completions.h"

#include "../joined_text.h"
#include "noted_words.h"

namespace zek::tool {
namespace {

using Value = NotedWord::Value;

constexpr const char* kAboutHelp = "Show the help of a command";

/// Within single quotes of a shell.
std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + '\'';
}

/// Within the brackets and between the colons of _arguments.
std::string ForArguments(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (std::string_view("[]:\\").find(c) != std::string_view::npos) escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// What follows the name of an option, or stands for one that has none.
std::string ZshValue(const NotedWord& word) {
    const std::string type = ':' + ForArguments(word.type) + ':';
    switch (word.value) {
        case Value::kNone: return "";
        case Value::kFile: return type + "_files";
        case Value::kText: return type;
        case Value::kChoice: return type + '(' + Joined(word.choices, " ") + ')';
    }
    return "";
}

std::string ZshRows(const NotedWord& word) {
    if (word.names.empty()) return " \\\n        " + Quoted((word.repeats ? "*" : "") + ZshValue(word));
    std::string rows;
    for (const std::string& name : word.names) {
        const std::string other = word.repeats ? "*" : '(' + Joined(word.names, " ") + ')';
        rows += " \\\n        " + Quoted(other + name + '[' + ForArguments(word.help) + ']' + ZshValue(word));
    }
    return rows;
}

std::string FishRow(const std::string& command, const NotedWord& word) {
    std::string row = "complete -c zek -n '__fish_seen_subcommand_from " + command + '\'';
    if (word.names.empty()) row += " -f";
    for (const std::string& name : word.names) {
        row += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (word.value == Value::kFile) row += " -r -F";
    if (word.value == Value::kText) row += " -x";
    if (word.value == Value::kChoice)
        row += (word.names.empty() ? " -a " : " -x -a ") + Quoted(Joined(word.choices, " "));
    return row + " -d " + Quoted(word.help) + '\n';
}

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const CommandSpec& command : Commands()) names.push_back(command.name);
    return names;
}

/// What bash does behind an option that has a value.
std::string BashValue(const NotedWord& word) {
    switch (word.value) {
        case Value::kNone: return "";
        case Value::kFile: return "files=1";
        case Value::kText: return "return";
        case Value::kChoice: return "words=" + Quoted(Joined(word.choices, " "));
    }
    return "";
}

/// What bash offers in the place of files, where a command takes other words without an option.
std::string BashOperands(const CommandSpec& command) {
    for (const NotedWord& word : WordsOf(command)) {
        if (word.names.empty() && word.value == Value::kChoice) return " operands=" + Quoted(Joined(word.choices, " "));
    }
    return "";
}

}  // namespace

std::string BashCompletion() {
    std::string values;
    std::string options;
    for (const CommandSpec& command : Commands()) {
        const std::string name = command.name;
        std::vector<std::string> all;
        for (const NotedWord& word : OptionsOf(command)) {
            all.insert(all.end(), word.names.begin(), word.names.end());
            if (word.value == Value::kNone) continue;
            values +=
                "        '" + name + ' ' + Joined(word.names, "' | '" + name + ' ') + "') " + BashValue(word) + " ;;\n";
        }
        options += "        " + name + ") options=" + Quoted(Joined(all, " ")) + BashOperands(command) + " ;;\n";
    }
    options += "        help) operands=" + Quoted(Joined(Names(), " ")) + " ;;\n";
    return "# bash completion for zek\n"
           "_zek() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} "
           "command=${COMP_WORDS[1]}\n"
           "    local files= words= options= operands=\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W '" +
           Joined(Names(), " ") +
           " help --help --version' -- \"$current\"))\n"
           "        return\n"
           "    fi\n"
           "    if [ \"$current\" = = ]; then\n"
           "        current=\n"
           "    elif [ \"$previous\" = = ]; then\n"
           "        previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
           "    fi\n"
           "    case \"$command $previous\" in\n" +
           values +
           "    esac\n"
           "    case \"$command\" in\n" +
           options +
           "    esac\n"
           "    if [ -n \"$words\" ]; then\n"
           "        COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
           "    elif [ -z \"$files\" ] && [[ $current == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$options\" -- \"$current\"))\n"
           "    elif [ -z \"$files\" ] && [ -n \"$operands\" ]; then\n"
           "        COMPREPLY=($(compgen -W \"$operands\" -- \"$current\"))\n"
           "    else\n"
           "        local IFS=$'\\n'\n"
           "        COMPREPLY=($(compgen -f -- \"$current\"))\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _zek zek\n";
}

std::string ZshCompletion() {
    std::string commands;
    std::string cases;
    for (const CommandSpec& command : Commands()) {
        commands += "        " + Quoted(std::string(command.name) + ':' + command.about) + '\n';
        cases += std::string("    ") + command.name + ")\n        _arguments -s -S";
        for (const NotedWord& word : WordsOf(command)) cases += ZshRows(word);
        cases += "\n        ;;\n";
    }
    commands += "        " + Quoted(std::string("help:") + kAboutHelp) + '\n';
    cases += "    help)\n        _arguments " + Quoted(":COMMAND:(" + Joined(Names(), " ") + ')') + "\n        ;;\n";
    return "#compdef zek\n"
           "if ((CURRENT == 2)); then\n"
           "    local -a commands=(\n" +
           commands +
           "    )\n"
           "    _describe command commands\n"
           "    return\n"
           "fi\n"
           "shift words\n"
           "((CURRENT--))\n"
           "case $words[1] in\n" +
           cases + "esac\n";
}

std::string FishCompletion() {
    std::string text = "# fish completion for zek\n";
    for (const CommandSpec& command : Commands()) {
        text += std::string("complete -c zek -n __fish_use_subcommand -f -a ") + command.name + " -d " +
                Quoted(command.about) + '\n';
        for (const NotedWord& word : WordsOf(command)) {
            if (!word.names.empty() || word.value == Value::kChoice) text += FishRow(command.name, word);
        }
    }
    text += std::string("complete -c zek -n __fish_use_subcommand -f -a help -d ") + Quoted(kAboutHelp) + '\n';
    return text + "complete -c zek -n '__fish_seen_subcommand_from help' -f -a " + Quoted(Joined(Names(), " ")) + '\n';
}

}  // namespace zek::tool
