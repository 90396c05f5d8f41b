/// Mistakes in sections, as people make them. Relies on section.h.
#pragma once

#include "section.h"

namespace zek::bench {

/// Puts a mistake into a section of a board that leads to a message. None of them keeps the second pass of the check
/// from running. `turn` chooses among those that the section offers.
void AddMistake(Section& section, unsigned turn);

}  // namespace zek::bench
