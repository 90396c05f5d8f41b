/// The images that this suite damages and loads: those of other tests, those of the example board, and some that it
/// compiles. Relies on process_test.h.
#pragma once

#include <string>
#include <vector>

#include "support/process_test.h"

namespace zek::test {

/// Both images of one source.
struct ImagePair {
    std::string compiled;
    std::string debug;
};

/// Compiles in child processes, so that this process's state stays fresh.
class ImagesTest : public ProcessTest {
protected:
    /// Of the sources that other tests work out by hand; they belong to different sources.
    static ImagePair Small();
    /// A compiled image with what no compiler writes, such as names without values; no debug image.
    static ImagePair Queried();
    static ImagePair Everything();
    static ImagePair ExampleBoard();
    /// Of a source of the generator of the yardstick.
    static ImagePair Generated(unsigned seed);

private:
    static ImagePair Compiled(const std::string& mainSource);
};

}  // namespace zek::test
