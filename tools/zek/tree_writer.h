/// The order in which the tree is shown, whatever it is written as. Relies on hardware.h.
#pragma once

#include <vector>

#include "hardware.h"

namespace zek::tool {

/// What is wrong with the parent of something at depth 0.
enum class ParentFault { kNone, kMissing, kCircle };

class TreeWriter {
public:
    virtual ~TreeWriter() = default;

    /// Groups come in depth-first order, each with the sensors in it; `depth` counts from 0.
    virtual void Group(const ShownGroup& group, std::size_t depth, ParentFault fault,
                       const std::vector<const ShownSensor*>& sensors) = 0;
    /// Once, behind the groups: the sensors whose group does not exist.
    virtual void Homeless(const std::vector<const ShownSensor*>& sensors) = 0;
    /// TAVRGROUPs in the same order; `sensors` are those that it lists, null for one that does not exist.
    virtual void View(const ShownView& view, std::size_t depth, ParentFault fault,
                      const std::vector<const ShownSensor*>& sensors) = 0;
};

/// Shows every group, sensor and TAVRGROUP once.
void WalkTree(const Hardware& hardware, TreeWriter& writer);

}  // namespace zek::tool
