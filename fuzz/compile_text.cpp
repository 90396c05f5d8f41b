#include <vector>

#include "../tools/zek/debug_check.h"
#include "compilation.h"
#include "harness.h"
#include "memory_file.h"
#include "process_state.h"
#include "queries.h"
#include "zekcomp/image_view.h"
#include "zekcomp/zekcomp.h"

namespace zek::fuzz {

namespace {

void LoadCompiled(const std::string& image) {
    MemoryFile file;
    file.Write(image);
    Require(gcInit(file.Path(), nullptr) == 1, "what gccOutput writes is loaded by gcInit");
    AskImage();
    ForgetEverything();
    const std::vector<unsigned char> bytes(image.begin(), image.end());
    Require(ImageView::Open(bytes).has_value(), "what gccOutput writes is verified");
}

/// Whatever was restored compiles into the same image as its source.
void LoadDebug(const Compilation& compilation) {
    MemoryFile file;
    file.Write(compilation.debug);
    Require(gdInit(file.Path(), nullptr) == 1, "what gccOutputD writes is loaded by gdInit");
    AskModel(compilation.debug.size());
    Require(!tool::CheckDebugImage(compilation.debug).failure, "what gccOutputD writes is verified");
    Require(Written(gccOutput) == compilation.compiled, "a restored model compiles as its source did");
    ForgetEverything();
}

}  // namespace

void CompileText(std::string_view text) {
    const Compilation compilation = Compile(text);
    Require(Compile(text) == compilation, "a second compilation gives the same messages and images");
    if (!compilation.accepted) return;
    LoadCompiled(compilation.compiled);
    LoadDebug(compilation);
}

}  // namespace zek::fuzz
