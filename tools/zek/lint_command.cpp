#include <memory>

#include "command.h"
#include "failure.h"
#include "lint.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr char kLintExample[] =
    "Example:\n"
    "  zek lint --list\n"
    "\n"
    "The rules are run by 'zek check'. A comment '; zek: allow CODE' on a line or above it allows what is found there.";

int ListRules() {
    StandardOutput out;
    for (const LintRule& rule : LintRules()) {
        std::string name = rule.name;
        name.resize(20, ' ');
        out.Write(std::string(rule.code) + "  " + name + "  " + AboutRule(rule) + '\n');
    }
    out.Finish();
    return kFine;
}

Run PrepareLint(Words& words) {
    const auto list = std::make_shared<bool>(false);
    const auto sources = std::make_shared<std::vector<std::string>>();
    words.Flag("--list", *list, "List the rules: code, name and what each finds");
    words.AnyFiles("SOURCE", *sources, "Not taken here: 'zek check SOURCE' runs the rules");
    return [list, sources] {
        if (*list && sources->empty()) return ListRules();
        const std::string source = sources->empty() ? "" : ' ' + sources->front();
        throw Failure(kUsageOrFiles, "'zek lint --list' lists the rules; 'zek check" + source + "' runs them");
    };
}

}  // namespace

const CommandSpec kLintCommand = {"lint",
                                  "List the rules by which sources are checked",
                                  kLintExample,
                                  PrepareLint,
                                  {kDone, nullptr, kWrongLineOrFile, nullptr}};

}  // namespace zek::tool
