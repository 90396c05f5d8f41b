/// The fixture of every case that touches the library's process-wide state: a process of its own, a folder of its own,
/// every message recorded. Relies on recorder.h.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/recorder.h"
#include "zekcomp/zekcomp.h"

namespace zek::test {

/// Fails when another case ran in this process before, or when another section-file parser than the built one serves.
/// Runs in an empty temporary folder, which is the current folder, so that file names in messages are short.
class ProcessTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Writes `main.zek` (or another file) and reads it: gccCompStart and gccParse.
    void Source(std::string_view text, const std::string& file = "main.zek");
    /// Source, then gccCheck.
    unsigned Check(std::string_view text);

    /// The messages since the last call of Errors or Messages, without what the driver says of itself ("Parse::load
    /// ..." and "Parse::No more sections...").
    static std::string Errors();
    /// The messages since the last call of Errors or Messages, all of them.
    static std::string Messages() { return TakeMessages(); }

    /// Runs `half` in a child process forked here and now, and reports its failures as this case's. What the child does
    /// to the library's state does not come back: write there, read here. Call it before this process has touched the
    /// state, if the child needs fresh state too.
    static void InChild(const std::function<void()>& half);

    static void Write(const std::filesystem::path& file, std::string_view bytes);
    static std::string Read(const std::filesystem::path& file);

private:
    std::filesystem::path folder_;
};

/// The name of a parameter row for INSTANTIATE_TEST_SUITE_P: its member `name`.
struct RowName {
    template <class Row>
    std::string operator()(const testing::TestParamInfo<Row>& info) const {
        return info.param.name;
    }
};

/// The bytes of hexadecimal digits; blanks and line feeds are passed over.
std::string FromHex(std::string_view digits);

/// Bytes as text for comparison: offset, then 16 bytes as hexadecimal, one line each.
std::string Dump(std::string_view bytes);

/// A 32-bit word as four bytes, least significant first.
std::string Word(unsigned word);

/// An image with its four time-stamp bytes (at offset 20) set to zero.
std::string WithoutTime(std::string image);

}  // namespace zek::test
