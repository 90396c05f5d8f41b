#include "recompile.h"

#include <unistd.h>

#include <utility>

#include "child.h"
#include "definitions.h"
#include "failure.h"
#include "finding_review.h"
#include "image_bytes.h"
#include "memory_file.h"
#include "parser_library.h"
#include "paths.h"
#include "renderer.h"
#include "report.h"
#include "source_index.h"
#include "source_reading.h"
#include "written_image.h"
#include "zekcomp/compiler.h"

namespace zek::tool {
namespace {

void Enter(const std::string& folder) {
    if (!folder.empty() && chdir(folder.c_str()) != 0) throw SystemFailure("cannot enter " + folder);
}

/// Reads and checks a source; true when it is valid. Stores what there is to tell.
bool CheckInto(const std::string& source, const MemoryFile& messages) {
    const ParserLibrary parser = ServingParser();
    if (!parser.Serves() || !parser.HasHook()) {
        throw Failure(kUsageOrFiles, "the parser library that serves is not the one that comes with zek");
    }
    SourceReading reading(parser, IncludeSearch({}, BuiltInFolder()), kMostFilesOfASource);
    if (!gccCompStart(source)) throw Failure(kUsageOrFiles, "cannot read " + source);
    gccParse();
    reading.Stop();
    const std::vector<Message> whileReading = TakeMessages();
    const bool passed = gccCheck();
    SourceIndex index(parser, &reading.Copies());
    SourceText text(&reading.Copies());
    const Levels levels;
    Review review(levels, {}, text, kMostFindings);
    Report report({}, source, reading.Files(), index, text, review);
    report.Add(whileReading, TakeMessages());
    for (Finding& finding : review.Kept()) report.AddWay(finding);
    messages.Append(TextRenderer({})->Of({source, std::move(review.Kept()), review.CountLeft()}, text));
    return passed && report.Losses() == 0;
}

void RequireWritten(bool written) {
    if (!written) throw Failure(kUsageOrFiles, "cannot hold an image in memory");
}

}  // namespace

Recompiled Recompile(const std::string& folder, const std::string& source,
                     const std::vector<std::string>& definitions) {
    const MemoryFile messages;
    const MemoryFile image;
    const MemoryFile debug;
    const int code = RunInChild("the compilation", [&] {
        Enter(folder);
        Define(definitions);
        if (!CheckInto(source, messages)) return static_cast<int>(kSourceHasErrors);
        RequireWritten(gccOutputD(debug.Name()) && gccOutput(image.Name()));
        return static_cast<int>(kFine);
    });
    if (code != kFine && code != kSourceHasErrors) throw Failure(kUsageOrFiles, "the source was not compiled");
    Recompiled result = {code == kFine, messages.Bytes(), image.Bytes(), debug.Bytes()};
    if (result.valid) RequireWritten(IsWholeCompiledImage(result.image) && IsWholeDebugImage(result.debug));
    return result;
}

std::string ImageBehind(std::string_view debugImage) {
    const MemoryFile image;
    const int code = RunInChild("the compilation", [&] {
        image.Append(CompiledDebugImage(debugImage, false));
        return static_cast<int>(kFine);
    });
    RequireWritten(code == kFine);
    return image.Bytes();
}

}  // namespace zek::tool
