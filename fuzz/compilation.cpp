#include "compilation.h"

#include "harness.h"
#include "heap_watch.h"
#include "messages.h"
#include "process_state.h"
#include "source_files.h"
#include "zekcomp/compiler.h"

namespace zek::fuzz {

namespace {

constexpr std::size_t kTime = 20;

/// How many times the size of its files a description takes at most, all of its outputs included.
constexpr std::size_t kMostOfFiles = 96;

constexpr std::string_view kGoodText = R"([DEFINE]
VT_VALUE = 1
[GROUP]
PARENT = 0
NAME = Lab
CHILDGROUP = 0
[SENSOR]
PARENT = Lab
NAME = Lamp
ID = 7
TYPE = 1
INITFLAG = 0
CONTROLMASK = 3
VALUE = VT_VALUE,3
[TAVRGROUP]
NAME = All
ID = 1
PID = 0
SENSORS = 7
)";

/// Reads the main file and checks it.
bool IsAccepted() {
    Require(gccCompStart(SourceFiles::kMainFile) == 1, "the main file can be opened");
    gccParse();
    return gccCheck() == 1;
}

}  // namespace

std::string Written(unsigned (*write)(const std::string& file)) {
    const MemoryFile file;
    Require(write(file.Path()) == 1, "an image is written where its file can be created");
    std::string image = file.Read();
    Require(image.size() >= kTime + 4, "a written image has a header");
    return image.replace(kTime, 4, 4, '\0');
}

Compilation Compile(std::string_view text) {
    ForgetEverything();
    TakeMessages();
    const SourceFiles files(text);
    const HeapWatch heap;
    Compilation result;
    result.accepted = IsAccepted();
    if (result.accepted) {
        result.debug = Written(gccOutputD);
        result.compiled = Written(gccOutput);
    }
    heap.HoldTo(kMostOfFiles, files.OpenedBytes());
    ForgetEverything();
    result.messages = TakeMessages();
    return result;
}

std::string CompileGoodHere() {
    const SourceFiles files(kGoodText);
    Require(IsAccepted(), "the small description is accepted");
    std::string image = Written(gccOutput);
    gccCompEnd();
    TakeMessages();
    return image;
}

const Compilation& GoodImages() {
    static const Compilation images = Compile(kGoodText);
    Require(images.accepted, "the small description is accepted");
    return images;
}

}  // namespace zek::fuzz
