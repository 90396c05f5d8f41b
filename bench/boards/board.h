/// A monitored machine of any size, worked out section by section from a seed: nothing of it is held in memory, and
/// every format is written from the same sections. Relies on section.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "random.h"
#include "section.h"

namespace zek::bench {

struct ActionPattern;
struct ItemRule;

class Board {
public:
    Board(unsigned sensors, std::uint64_t seed) : sensors_(sensors), seed_(seed) {}

    /// How many sections of a kind there are, at least one.
    unsigned Count(Kind kind) const;
    /// How many sections there are of all kinds.
    unsigned Sections() const;
    /// Makes `section` the section of this kind with this number, from 0 to Count(kind) - 1.
    void Fill(Kind kind, unsigned index, Section& section) const;
    /// Makes each section in the order of the board, and hands it to `use`, which may alter it.
    template <class Use>
    void ForEach(const Use& use) const {
        Section section;
        for (unsigned kind = 0; kind < kKindNames.size(); ++kind) {
            for (unsigned i = 0; i < Count(Kind{kind}); ++i) {
                Fill(Kind{kind}, i, section);
                use(section);
            }
        }
    }

    /// The groups are a tree of which group 0 is the root; the children of a group follow each other and stand behind
    /// it.
    unsigned FirstChildOf(unsigned group) const;
    unsigned ChildrenOf(unsigned group) const;
    /// Where sections hang in groups: the first section of a kind that belongs to a group or to one behind it.
    unsigned FirstOfGroup(Kind kind, unsigned group) const;

private:
    /// What a pattern may name: so many of the first ones.
    struct Scope {
        unsigned actions;
        unsigned globals;
    };

    /// What there is of a kind, in the order of the kinds.
    struct KindRow {
        unsigned sensorsForOne;  ///< so many sensors have one section; 0 where there is one at all
        void (Board::*fill)(Section& section, Random& random) const;
    };
    static const KindRow kKinds[];
    static const KindRow& RowOf(Kind kind);

    void FillQuorzek(Section& section, Random& random) const;
    void FillGroup(Section& section, Random& random) const;
    void FillSensor(Section& section, Random& random) const;
    void FillDevice(Section& section, Random& random) const;
    void FillView(Section& section, Random& random) const;
    void FillAction(Section& section, Random& random) const;
    void FillTable(Section& section, Random& random) const;
    void FillGlobal(Section& section, Random& random) const;
    void FillRepeater(Section& section, Random& random) const;
    void FillDefine(Section& section, Random& random) const;
    void FillProperty(Section& section, Random& random) const;
    void FillSystem(Section& section, Random& random) const;

    Scope Everything() const;
    void AddValues(Section& section, std::span<const ItemRule> rules, Random& random) const;
    void AddProperties(Section& section, std::span<const ItemRule> rules, Random& random) const;
    /// Adds the value that a pattern makes, its type being the pattern up to the first comma.
    void AddValue(Section& section, std::string key, std::string_view pattern, Scope scope, Random& random) const;
    void Expand(std::string_view pattern, Scope scope, Random& random, std::string& out) const;
    void ExpandPlace(char place, Scope scope, Random& random, std::string& out) const;
    void ExpandCall(bool passArgument, Scope scope, Random& random, std::string& out) const;

    std::string NameOfSection(Kind kind, unsigned index, std::span<const std::string_view> names) const;
    std::string GroupName(unsigned index) const;
    std::string WordOf(unsigned index) const;
    std::string GlobalOf(unsigned index) const;
    std::string TableName(unsigned index) const;
    std::string ActionName(unsigned index) const;
    const ActionPattern& PatternOfAction(unsigned index) const;
    unsigned GroupOfSensor(unsigned index) const;
    unsigned IdOfSensor(unsigned index) const;

    unsigned sensors_;
    std::uint64_t seed_;
};

}  // namespace zek::bench
