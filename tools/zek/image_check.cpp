#include "image_check.h"

#include "memory_file.h"
#include "printable.h"
#include "progress.h"

namespace zek::tool {
namespace {

template <class Finding>
ImageFault FaultOf(const Finding& finding) {
    return {finding.Place(), finding.Sentence(), NameOf(finding.code), static_cast<std::size_t>(finding.offset)};
}

/// The same function for findings of both kinds; empty where nobody wants to see them.
template <class Finding>
std::function<void(const Finding&)> Telling(const ShowNote& showNote) {
    if (!showNote) return nullptr;
    return [&showNote](const Finding& note) { showNote(FaultOf(note)); };
}

ImageSize CheckCompiledImage(const std::string& file, std::string_view bytes, const ShowNote& showNote) {
    const ImageView view = OpenCompiledImage(file, bytes);
    if (showNote) view.ForEachNote(Telling<ImageFinding>(showNote));
    ImageSize size = {view.AllSections().size(), 0, view.NoteCount()};
    for (const ImageView::Section section : view.AllSections()) size.entries += section.AllEntries().size();
    return size;
}

}  // namespace

std::string ImageFault::Told() const {
    return place + (place.empty() ? "" : ": ") + sentence + " (" + code + " at byte " + std::to_string(offset) + ')';
}

NoImage::NoImage(const std::string& file, ImageFault fault)
    : Failure(kNoImage, file + ": " + fault.Told()), file_(file), fault_(std::move(fault)) {}

std::string BytesOfImage(const std::string& file) {
    ShowPhase("reading", file);
    return ReadFile(file);
}

ImageView OpenCompiledImage(const std::string& file, std::string_view bytes) {
    ShowPhase("verifying", file);
    ImageFinding failure;
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    std::optional<ImageView> view = ImageView::Open({data, bytes.size()}, &failure);
    if (!view) throw NoImage(file, FaultOf(failure));
    return *std::move(view);
}

DebugCheck CheckedDebugImage(const std::string& file, std::string_view bytes, const ShowNote& showNote) {
    ShowPhase("verifying", file);
    const DebugCheck check = CheckDebugImage(bytes, Telling<DebugFinding>(showNote));
    if (check.failure) throw NoImage(file, FaultOf(*check.failure));
    return check;
}

DebugSource SourceIn(const std::string& file, std::string_view bytes) {
    if (RequireKind(file, bytes) != ImageKind::kDebug) throw Failure(kUsageOrFiles, file + " is no debug image");
    CheckedDebugImage(file, bytes);
    return ReadDebugSource(bytes);
}

ImageSize CheckImage(ImageKind kind, const std::string& file, std::string_view bytes, const ShowNote& showNote) {
    if (kind == ImageKind::kCompiled) return CheckCompiledImage(file, bytes, showNote);
    const DebugCheck check = CheckedDebugImage(file, bytes, showNote);
    return {check.sections, check.entries, check.notes};
}

ImageKind RequireKind(const std::string& file, std::string_view bytes) {
    const ImageKind kind = KindOf(bytes);
    if (kind == ImageKind::kNone) throw NoImage(file, {"", "is neither a compiled nor a debug image", "bad-magic", 0});
    return kind;
}

}  // namespace zek::tool
