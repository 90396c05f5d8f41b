/// The library's messages as findings: with the place that they are about, what else belongs there, and what probably
/// was meant. Relies on the messages' formats (code_table.h) and on places.h for the files.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "code_table.h"
#include "finding.h"
#include "finding_review.h"
#include "messages.h"
#include "places.h"
#include "related_places.h"
#include "source_names.h"
#include "source_text.h"

namespace zek::tool {

class EqualMessages;

struct ReportOptions {
    bool raw = false;                  ///< messages as the library sent them
    bool verbose = false;              ///< also what the reading says of itself, and what says nothing new
    std::set<std::string> words = {};  ///< that the command line defines
};

class Report {
public:
    /// `source` is the name of the main source. Files, index, text and review must outlive the report.
    Report(const ReportOptions& options, std::string source, const std::vector<SourceFile>& files, SourceIndex& index,
           SourceText& text, Review& review);

    /// Gives the review the messages of the reading, then those of the check, in the order in which they came; what the
    /// check repeats of the reading is one finding. Call it once.
    void Add(const std::vector<Message>& reading, const std::vector<Message>& checking);

    /// Fills in the way to the file of a finding.
    void AddWay(Finding& finding);

    /// The messages as the library sent them, where the options say so.
    const std::string& Raw() const { return raw_; }

    /// How much of the source is missing in the model although the library goes on without a failure: sections that it
    /// does not know, includes that it could not load.
    unsigned Losses() const { return losses_; }

private:
    void AddRaw(const Message& message);
    void AddAll(const std::vector<Message>& reading, const std::vector<Message>& checking);
    void AddOne(const Message& message, bool fails);
    void AddWhy(Finding& finding, const Refusal& refusal, const std::string& loaded);
    static void AddKindOfFile(Finding& finding, std::string_view line);
    void AddLoss(Finding finding, const Message& message);
    void AddLocated(Finding finding, const Message& message);
    Place PlaceOfFile(const Message& message);
    Place PlaceOfSection(const Message& message);
    /// The place with its columns.
    Place Marked(const Place& place, const Wanted& wanted, const std::string& code);
    /// The places that a message of the check may be about, those of its twins taken away where they are known; no more
    /// of them than are shown.
    PossiblePlaces PlacesOf(const Message& message, const Wanted& wanted);
    /// The header of the section that lacks an entry, where that can be told for certain.
    std::optional<Place> SectionWithout(const std::string& section, const std::string& key);

    ReportOptions options_;
    std::string source_;
    const std::vector<SourceFile>& files_;
    SourceIndex& index_;
    SourceText& text_;
    Review& review_;
    Places places_;
    SourceNames names_;
    RelatedPlaces related_;
    std::map<std::pair<std::string, std::string>, std::size_t> missing_;       // messages about a missing entry, in all
    std::map<std::pair<std::string, std::string>, std::size_t> missingShown_;  // of these, so far
    EqualMessages* checked_ = nullptr;                                         // those of the check
    std::string raw_;
    unsigned losses_ = 0;
    std::map<std::string, std::size_t> openings_;     // of each file, the position of the first
    std::map<std::size_t, std::vector<Place>> ways_;  // to an opening
    std::size_t pastMost_ = 0;  // files that were not read because of the limit, and of which nothing was told so far
};

}  // namespace zek::tool
