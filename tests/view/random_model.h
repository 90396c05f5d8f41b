/// Models that a host puts together itself, from a seed: sections, keys and keys' places that no source gives, tables
/// that it has filled before. Relies on the model, the tables and random.h.
#pragma once

#include <string>
#include <vector>

#include "model/section.h"
#include "yardstick/random.h"

namespace zek::test {

class RandomModel {
public:
    explicit RandomModel(unsigned seed) : random_(seed) {}

    /// Adds to the model, which was read from `kSound`, what a host may add. Many of the models do not pass the check.
    void Build();

    /// What was done, for who looks for what is wrong.
    const std::string& Story() const { return story_; }
    /// Whether a table has used up its identifiers.
    bool UsedUp() const { return usedUp_; }

private:
    struct Step {
        const char* name;
        unsigned percent;  ///< how often a model gets it
        void (RandomModel::*take)();
    };
    static const std::vector<Step> kSteps;

    void AddSection();
    void AddEntry();
    void RepeatEntry();
    void MoveEntry();
    void MoveParent();
    void LoseName();
    void AddUncompiled();
    void MoveSection();
    void FillTable();
    void RenumberTable();
    void LeaveNumbersOut();
    void UseUpTable();

    std::string Unique(const std::string& prefix) { return prefix + std::to_string(++last_); }
    std::string Key(unsigned type);
    std::string Text(unsigned type);
    std::string Value(unsigned type);
    CZEKEntry* Entry(unsigned type);
    void Insert(std::vector<CZEKEntry*>& entries, CZEKEntry* entry);
    void MoveInto(SectionList& list, CZEKSection& section);
    SectionList& AnyList();
    CZEKSection& AnySection();
    CZEKSection* NewSection(const std::string& keyword);

    Random random_;
    std::string story_;
    std::vector<std::string> groups_ = {"A", "B"};
    unsigned last_ = 0;
    unsigned lastId_ = 100;
    unsigned line_ = 200;
    bool usedUp_ = false;
};

}  // namespace zek::test
