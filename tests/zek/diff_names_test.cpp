// What `diff` says of images in which very many sections have one name, as only a host can build them. A name leads to
// the first section that has it.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "diff.h"
#include "section_path.h"

namespace zek::test {
namespace {

using tool::Change;
using tool::DescribedImage;
using tool::DescribedSection;
using tool::DescribedValue;
using tool::Difference;

DescribedValue Naming(const std::string& key, const char* keyword, const std::string& name) {
    return {key, name, {{keyword, 0, name.size()}}};
}

DescribedSection Group(const std::string& name, unsigned number) {
    return {"GROUP", name, {Naming("NAME", "GROUP", name), {"CHILDGROUP", std::to_string(number)}}};
}

DescribedSection Sensor(const std::string& name, const std::string& parent, unsigned id) {
    return {"SENSOR", name, {Naming("PARENT", "GROUP", parent), {"NAME", name}, {"ID", std::to_string(id)}}};
}

DescribedSection Action(const std::string& name, const std::string& key, const std::string& other) {
    return {"ACTION", name, {{"NAME", name}, Naming(key, "ACTION", other)}};
}

std::string Told(const Difference& difference) {
    const std::string path = tool::PathTo(difference.keyword, difference.name, difference.key);
    if (difference.change == Change::kRenamed) return path + " is " + difference.after;
    const char* const what = difference.change == Change::kAdded     ? " added"
                             : difference.change == Change::kRemoved ? " removed"
                                                                     : " changed";
    return path + what + (difference.key.empty() ? "" : ": " + difference.before + " to " + difference.after);
}

/// Two images, and what differs by the plain answer.
struct Pair {
    DescribedImage before;
    DescribedImage after;
    std::vector<std::string> differences;
};

std::string Numbered(const char* name, unsigned number) { return name + std::to_string(number); }

/// So many groups A, each with a number of its own, whose sensors are all in the first; the names after.
Pair GroupsNamed(unsigned count, const std::function<std::string(unsigned)>& name, const char* sensor) {
    Pair pair;
    for (unsigned i = 0; i < count; ++i) {
        pair.before.sections.push_back(Group("A", i));
        pair.after.sections.push_back(Group(name(i), i));
        if (name(i) != "A") pair.differences.push_back("GROUP/A is " + name(i));
    }
    for (unsigned i = 0; i < count; ++i) {
        pair.before.sections.push_back(Sensor(Numbered("S", i), "A", i));
        pair.after.sections.push_back(Sensor(Numbered(sensor, i), name(0), i));
        if (*sensor != 'S') pair.differences.push_back(Numbered("SENSOR/S", i) + " is " + Numbered(sensor, i));
    }
    return pair;
}

/// So many actions A and B that call each other by name, and are C and D after.
Pair ActionsThatCallEachOther(unsigned count) {
    Pair pair;
    for (unsigned i = 0; i < count; ++i) {
        pair.before.sections.push_back(Action("A", "VALUE", "B"));
        pair.before.sections.push_back(Action("B", "VALUE_1", "A"));
        pair.after.sections.push_back(Action("C", "VALUE", "D"));
        pair.after.sections.push_back(Action("D", "VALUE_1", "C"));
        pair.differences.insert(pair.differences.end(), {"ACTION/A is C", "ACTION/B is D"});
    }
    return pair;
}

/// Of so many groups the last ones are gone; the sensors still are in the first.
Pair GroupsThatAreFewer(unsigned count) {
    Pair pair;
    for (unsigned i = 0; i < count; ++i) {
        pair.before.sections.push_back(Group("A", i));
        if (i < count / 2) pair.after.sections.push_back(Group("A", i));
        if (i >= count / 2) pair.differences.push_back("GROUP/A removed");
    }
    for (DescribedImage* image : {&pair.before, &pair.after}) image->sections.push_back(Sensor("S", "A", 1));
    return pair;
}

/// All but the first have another name; who names A still means the first.
Pair GroupsOfWhichTheFirstStays(unsigned count) {
    return GroupsNamed(
        count, [](unsigned i) { return i == 0 ? "A" : "B"; }, "S");
}

TEST(DiffOfOneName, SaysThePlainAnswerHoweverManyThereAre) {
    constexpr unsigned kCount = 2000;
    const struct {
        const char* what;
        Pair pair;
    } rows[] = {
        {"one other name", GroupsNamed(
                               kCount, [](unsigned) { return "B"; }, "S")},
        {"two other names", GroupsNamed(
                                kCount, [](unsigned i) { return i % 2 ? "B" : "C"; }, "S")},
        {"names of their own", GroupsNamed(
                                   kCount, [](unsigned i) { return Numbered("B", i); }, "S")},
        {"with their sensors", GroupsNamed(
                                   kCount, [](unsigned i) { return i % 2 ? "B" : "C"; }, "T")},
        {"all but the first", GroupsOfWhichTheFirstStays(kCount)},
        {"calling each other", ActionsThatCallEachOther(kCount)},
        {"fewer", GroupsThatAreFewer(kCount)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<std::string> differences;
        tool::Compare(row.pair.before, row.pair.after,
                      [&](const Difference& difference) { differences.push_back(Told(difference)); });
        // Not the lists: they would be shown whole.
        ASSERT_EQ(differences.size(), row.pair.differences.size());
        for (std::size_t i = 0; i < differences.size(); ++i) ASSERT_EQ(differences[i], row.pair.differences[i]) << i;
    }
}

}  // namespace
}  // namespace zek::test
