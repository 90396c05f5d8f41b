#include "noted_words.h"

#include <sstream>
#include <utility>

#include "../code_table.h"

namespace zek::tool {
namespace {

using Value = NotedWord::Value;

std::vector<std::string> Split(const std::string& names) {
    std::vector<std::string> all;
    std::istringstream rest(names);
    for (std::string name; std::getline(rest, name, ',');) all.push_back(name);
    return all;
}

std::vector<std::string> Codes() {
    const std::set<std::string> all = AllCodes();
    return {all.begin(), all.end()};
}

/// The codes of which an option may make more or less, behind another word if there is one.
std::vector<std::string> CodesBehind(const std::string& other) {
    std::vector<std::string> codes = Codes();
    std::erase_if(codes, [](const std::string& code) { return RowOfCode(code)->level == Level::kError; });
    if (!other.empty()) codes.insert(codes.begin(), other);
    return codes;
}

class Notes : public Words {
public:
    std::vector<NotedWord> all;

    void File(const std::string& type, std::string&, const std::string& help) override {
        all.push_back({{}, type, help, Value::kFile, {}, false, true});
    }
    void Files(const std::string& type, std::vector<std::string>&, const std::string& help) override {
        all.push_back({{}, type, help, Value::kFile, {}, true, true});
    }
    void AnyFiles(const std::string& type, std::vector<std::string>&, const std::string& help) override {
        all.push_back({{}, type, help, Value::kFile, {}, true, false});
    }
    void OptionalFile(const std::string& type, std::string&, const std::string& help) override {
        all.push_back({{}, type, help, Value::kFile});
    }
    void Argument(const std::string& type, std::string&, const std::string& help) override {
        all.push_back({{}, type, help, Value::kText, {}, false, true});
    }
    void AnyCodes(const std::string& type, std::vector<std::string>&, const std::string& help) override {
        all.push_back({{}, type, help, Value::kChoice, Codes(), true, false});
    }
    void EachCode(const std::string& names, const std::string& type, const std::string& other,
                  const std::function<void(const std::string&)>&, const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kChoice, CodesBehind(other), true});
    }
    void FileOption(const std::string& names, const std::string& type, std::string&, const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kFile});
    }
    void Folder(const std::string& type, std::string& place, const std::string& help) override {
        File(type, place, help);
    }
    void FolderOptions(const std::string& names, const std::string& type, std::vector<std::string>&,
                       const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kFile, {}, true});
    }
    void Count(const std::string& names, const std::string& type, std::size_t&, const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kText});
    }
    void Text(const std::string& names, const std::string& type, std::string&, const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kText});
    }
    void Texts(const std::string& names, const std::string& type, std::vector<std::string>&,
               const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kText, {}, true});
    }
    void Choice(const std::string& names, const std::string& type, const std::vector<std::string>& words, std::string&,
                const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kChoice, words});
    }
    void OptionalText(const std::string& names, const std::string& type, std::optional<std::string>&,
                      const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kText});
    }
    void Each(const std::string& names, const std::string& type, const std::function<void(const std::string&)>&,
              const std::string& help) override {
        all.push_back({Split(names), type, help, Value::kText, {}, true});
    }
    void Flag(const std::string& names, bool&, const std::string& help) override {
        all.push_back({Split(names), "", help});
    }
};

}  // namespace

std::vector<NotedWord> WordsOf(const CommandSpec& command) {
    Notes notes;
    command.prepare(notes);
    notes.all.push_back({{"-h", "--help"}, "", "Print help and exit"});
    return std::move(notes.all);
}

std::vector<NotedWord> OptionsOf(const CommandSpec& command) {
    std::vector<NotedWord> options = WordsOf(command);
    std::erase_if(options, [](const NotedWord& word) { return word.names.empty(); });
    return options;
}

}  // namespace zek::tool
