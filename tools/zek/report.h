/// The library's messages as the user sees them: FILE:LINE: error: [SECTION]:KEY, text. Relies on the messages' formats
/// and on places.h for FILE.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "messages.h"
#include "places.h"

namespace zek::tool {

struct ReportOptions {
    bool raw = false;      ///< messages as the library sent them
    bool verbose = false;  ///< also what the reading says of itself, and what says nothing new
};

class Report {
public:
    /// `source` is the name of the main source, for the summary. Files and index must outlive the report.
    Report(const ReportOptions& options, std::string source, const std::vector<SourceFile>& files, SourceIndex& index);

    /// Adds the messages of the reading, then those of the check, in the order in which they came. An "Error" of the
    /// reading that the check does not repeat has not failed it and counts as a warning. Call it once.
    void Add(const std::vector<Message>& reading, const std::vector<Message>& checking);

    /// All lines so far, then the summary line; empty when there is nothing to say.
    std::string Text() const;

    /// How much of the source is missing in the model although the library goes on without a failure: sections that it
    /// does not know, includes that it could not load.
    unsigned Losses() const { return losses_; }

private:
    enum class Severity { kError, kWarning };

    void AddOne(const Message& message, bool fails);
    void AddLoss(const Message& message);
    void AddLocated(const Message& message, Severity severity);
    void AddLine(const std::string& place, Severity severity, const std::string& text);
    /// The places that a message of the check may be about, those of its twins taken away where they are known.
    std::vector<Place> PlacesOf(const Message& message, const Wanted& wanted, std::string_view rest);
    /// The chain of files that ends in one that includes itself.
    void NoteCircle(const Message& message, const std::string& place);
    void NoteMissing(const std::string& section, const std::string& key);
    std::string LossText(const Message& message, std::string& place);
    /// The text of a format from its `position`, whose first conversion takes the argument at `argument`.
    std::string Filled(const Message& message, std::string_view format, std::size_t argument);

    ReportOptions options_;
    std::string source_;
    SourceIndex& index_;
    Places places_;
    std::map<std::pair<std::string, std::string>, std::size_t> missing_;       // messages about a missing entry, in all
    std::map<std::pair<std::string, std::string>, std::size_t> missingShown_;  // of these, so far
    std::map<std::string, std::size_t> checked_;                               // messages of the check, by their text
    std::map<std::string, std::size_t> checkedShown_;                          // of these, so far
    std::string text_;
    unsigned errors_ = 0;
    unsigned warnings_ = 0;
    unsigned losses_ = 0;
    unsigned pastMost_ = 0;                 // files that were not read because of the limit
    std::optional<std::size_t> lastChain_;  // whose includes of itself were shown with their chain last
};

}  // namespace zek::tool
