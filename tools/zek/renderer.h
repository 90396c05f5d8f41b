/// The findings of a run in one of its formats: as text, or as a document for programs. Relies on finding.h; a source
/// line is shown as source_text.h reads it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "finding.h"
#include "finding_review.h"
#include "source_text.h"

namespace zek::tool {

/// What there is to tell about one source.
struct SourceFindings {
    std::string source;  ///< the name of the main source
    std::vector<Finding> findings = {};
    SeverityCounts left = {};             ///< how many more there are that are not shown, of each severity
    std::optional<std::string> raw = {};  ///< what the library sent, in the place of the findings; text only

    /// Those that are not shown, too.
    std::size_t Count(Severity severity) const;
    /// What is to be said of those that are not shown; empty where all are.
    std::string TellLeft() const;
};

/// Such as "1 error, 2 warnings"; empty where there is none.
std::string CountedBySeverity(const SeverityCounts& counts);

/// Makes the output of a run from that of its sources: Begin, then the pieces with a separator between them, then End.
class Renderer {
public:
    virtual ~Renderer() = default;

    virtual std::string Begin() { return {}; }
    /// The piece of one source; empty where there is nothing to say.
    virtual std::string Of(const SourceFindings& all, SourceText& text) = 0;
    /// The piece of a source of which nothing more can be told, and why; empty where the end tells it.
    virtual std::string OfFailure(const std::string& source, const std::string& why) {
        (void)source;
        (void)why;
        return {};
    }
    virtual std::string Separator() { return {}; }
    /// `code` is the exit code of the run.
    virtual std::string End(int code) {
        (void)code;
        return {};
    }
};

/// What text is shown on.
struct Screen {
    bool colour = false;
    std::size_t columns = 0;  ///< of a terminal; 0 where it is none
};

/// file:line:column: severity: message [code], the source line with what it is about underlined, notes, and a line that
/// counts. The way to an included file is shown with the first finding there. On a terminal a source line
/// takes one row, and nothing of a source is sent that a terminal obeys.
std::unique_ptr<Renderer> TextRenderer(const Screen& screen);
/// One object; its schema is told in docs/findings.md.
std::unique_ptr<Renderer> JsonRenderer();
/// A log of the static analysis format of that name, version 2.1.0, with one run.
std::unique_ptr<Renderer> SarifRenderer();
/// The workflow commands of GitHub, which show a finding beside the changed line.
std::unique_ptr<Renderer> GithubRenderer();

/// The formats by their names on the command line.
struct FormatRow {
    const char* name;
    std::unique_ptr<Renderer> (*make)(const Screen& screen);
    bool toStandardOutput;  ///< else to standard error
};
extern const std::vector<FormatRow> kFormats;

}  // namespace zek::tool
