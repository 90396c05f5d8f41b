/// Which path probably was meant by one that leads nowhere. Relies on section_path.h.
#pragma once

#include <set>
#include <string>

#include "section_path.h"

namespace zek::tool {

/// Looks among the names of the sections of the kind, or among the keys of the section that the path means.
class NearPath {
public:
    explicit NearPath(SectionPath path) : path_(std::move(path)) {}

    /// A section of the kind that the path asks for.
    void Add(const ShownSection& section);
    /// A key that the path may mean, of no section.
    void AddKey(const std::string& key);

    /// "; did you mean PATH?" where one is near, else nothing.
    std::string Told() const;

private:
    SectionPath path_;
    std::set<std::string> names_;
    std::set<std::string> keys_;
    bool isThere_ = false;  // the path means a section
};

}  // namespace zek::tool
