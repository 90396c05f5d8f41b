/// Where the findings of a run go and how they look there. Relies on renderer.h and finding_review.h.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "command.h"
#include "finding_review.h"
#include "renderer.h"

namespace zek::tool {

/// What every command that tells findings takes.
struct FindingsOptions {
    std::string format = "text";
    std::string color = "auto";
    std::size_t most = kMostFindings;  ///< of each severity and source
    Levels levels;
};

void AddFindingsOptions(Words& words, FindingsOptions& options);

/// The variables that count for these commands, behind others.
std::vector<Variable> FindingsEnvironment(std::vector<Variable> others = {});

/// Text goes to standard error as it comes; a document for programs goes to standard output, whole.
class FindingsOutput {
public:
    explicit FindingsOutput(const FindingsOptions& options);

    /// Whether the pieces make one document.
    bool IsDocument() const { return format_->toStandardOutput; }
    std::string Piece(const SourceFindings& all, SourceText& text) { return renderer_->Of(all, text); }
    void Show(const std::string& piece);
    /// Tells in the document why there is no more about a source; in text it stands on standard error already.
    void ShowFailure(const std::string& source, const std::string& why);
    /// The pieces so far, without beginning and end; for a process that gives them to the one that has the document.
    const std::string& Pieces() const { return pieces_; }
    /// Ends the document; `code` is the exit code of the run. Throws Failure where it cannot be written.
    void Finish(int code);

private:
    const FormatRow* format_;
    std::unique_ptr<Renderer> renderer_;
    std::string pieces_;
    bool isEmpty_ = true;
};

}  // namespace zek::tool
