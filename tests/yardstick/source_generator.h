/// Sources of every kind of section, sound or damaged, from a seed. Relies on random.h.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "yardstick/random.h"

namespace zek::test {

/// Makes one source: names and ids that clash, parents that are missing or come later, keys given twice, calls with the
/// wrong number of parameters, sections spread over included files. How much of it is wrong hangs on the seed; about
/// half of the sources pass the first pass of the check. One seed in kCrowdedEvery makes a crowded source: so many
/// sections, keys and names that the library no longer walks them.
class SourceGenerator {
public:
    static constexpr unsigned kCrowdedEvery = 75;

    explicit SourceGenerator(unsigned seed);

    /// File names to their texts; the main file is main.zek.
    std::map<std::string, std::string> Files();

private:
    using Items = std::vector<std::pair<std::string, std::string>>;
    struct Action {
        std::string name;
        unsigned arguments = 0;
        std::vector<std::string> values;
    };
    /// The section that a value stands in: an action, or null for any other.
    using Owner = const Action*;

    /// A number of sections, keys or names: up to `most`, but above 64 in so many percent of what a crowded source has.
    unsigned Count(unsigned most, unsigned crowded);
    void NameSections();
    std::vector<std::string> Names(const std::string& prefix, unsigned most);
    std::vector<std::string> Sections();
    std::string Text(const std::string& keyword, Items items);
    void Spoil(Items& items);

    bool Wrong() { return random_.Chance(wrong_); }
    bool Malformed() { return random_.Chance(malformed_); }
    std::string Spelled(unsigned number);
    std::string Number();
    std::string Operand(Owner owner);
    std::string Operands(Owner owner, unsigned count);
    std::string Call(Owner owner);
    std::string Bus(Owner owner, bool smbus);
    std::string Payload(unsigned type, Owner owner);
    std::string Value(Owner owner);

    std::string QuorzekOrSystem();
    std::string FreeKeys(const std::string& keyword);
    std::string Group(unsigned index);
    std::string Sensor(unsigned index);
    std::string Device(unsigned index);
    std::string ActionText(const Action& action);
    std::string Table(const std::string& name);
    std::string TavrGroup(unsigned index);
    std::string Words(const std::string& keyword);
    std::string TypeWords();

    Random random_;
    bool crowded_ = false;
    unsigned wrong_ = 0;      ///< percent of what the second pass looks at that is wrong
    unsigned malformed_ = 0;  ///< the same of the first pass
    std::vector<std::string> groups_, sensors_, devices_, tables_, tavrGroups_, globals_;
    std::vector<Action> actions_;
    unsigned freeKeys_ = 0;
};

}  // namespace zek::test
