#include "findings_output.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "columns.h"
#include "streams.h"

namespace zek::tool {
namespace {

/// As the line asks; else where a terminal reads that has colours and nobody minds them.
bool WantsColour(const std::string& color, bool onTerminal) {
    if (color != "auto") return color == "always";
    const char* const none = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return !(none && *none) && terminal && std::string(terminal) != "dumb" && onTerminal;
}

Screen ScreenOn(int descriptor, const std::string& color) {
    const bool onTerminal = IsTerminal(descriptor);
    return {WantsColour(color, onTerminal), onTerminal ? TerminalColumns(descriptor) : 0};
}

const FormatRow* RowOfFormatName(const std::string& name) {
    const auto row = std::find_if(kFormats.begin(), kFormats.end(), [&](const FormatRow& a) { return name == a.name; });
    return &*row;
}

}  // namespace

void AddFindingsOptions(Words& words, FindingsOptions& options) {
    std::vector<std::string> formats;
    for (const FormatRow& row : kFormats) formats.push_back(row.name);
    words.Choice(
        "--format", "FORMAT", formats, options.format,
        "How findings are shown: text on standard error (the default), or json, sarif or github on standard output");
    words.Choice("--color", "WHEN", {"auto", "always", "never"}, options.color,
                 "Colours in text: auto, always or never; default: auto, on a terminal unless NO_COLOR is set");
    words.EachCode(
        "-W", "CODE", "error",
        [&options](const std::string& code) {
            code == "error" ? options.levels.RaiseWarnings() : options.levels.Warn(code);
        },
        "Show this code as a warning; -Werror: all warnings are errors");
    words.EachCode(
        "--no-warn", "CODE", "", [&options](const std::string& code) { options.levels.Hide(code); },
        "Do not show this code");
    words.EachCode(
        "--error", "CODE", "", [&options](const std::string& code) { options.levels.Raise(code); },
        "Take this code for an error");
    words.Count("--max-findings", "N", options.most,
                "Show so many errors, warnings and notes of each source at most, and count the others; default: " +
                    std::to_string(options.most));
}

std::vector<Variable> FindingsEnvironment(std::vector<Variable> others) {
    others.push_back({"NO_COLOR", "Set to something, keeps --color=auto from colours."});
    others.push_back({"TERM", "Where it is not set, or dumb, --color=auto shows no colours."});
    others.push_back(
        {"COLUMNS", "The width to which source lines are cut on a terminal, if not that of the terminal."});
    return others;
}

FindingsOutput::FindingsOutput(const FindingsOptions& options)
    : format_(RowOfFormatName(options.format)), renderer_(format_->make(ScreenOn(STDERR_FILENO, options.color))) {}

void FindingsOutput::Show(const std::string& piece) {
    if (!IsDocument()) return Tell(piece);
    if (piece.empty()) return;
    pieces_ += (isEmpty_ ? "" : renderer_->Separator()) + piece;
    isEmpty_ = false;
}

void FindingsOutput::ShowFailure(const std::string& source, const std::string& why) {
    if (IsDocument()) Show(renderer_->OfFailure(source, why));
}

void FindingsOutput::Finish(int code) {
    if (!IsDocument()) return;
    StandardOutput out;
    out.Write(renderer_->Begin() + pieces_ + renderer_->End(code));
    out.Finish();
}

}  // namespace zek::tool
