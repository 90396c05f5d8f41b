/// The fixture of a process without the section-file parser library, which a test may give a scripted one. Relies on
/// scripted_parser.h and recorder.h.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "frontend/scripted_parser.h"
#include "support/recorder.h"
#include "zekcomp/zekcomp.h"

namespace zek::test {

/// Fails when an installed parser library serves this process, or when another case ran in it before.
class ParserHost : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override { gccCompEnd(); }

    /// Brings the functions of a scripted parser library into the process, for the rest of its life: "complete",
    /// "peeking", or "without_RSParse" and so on.
    static void Load(const std::string& library);

    /// The calls that reached the parser since the last time, one a line.
    static std::string Calls();
};

}  // namespace zek::test
