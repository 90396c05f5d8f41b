#include "source_copies.h"

#include <optional>

#include "failure.h"
#include "paths.h"

namespace zek::tool {

std::string SourceCopies::Take(const std::string& path, bool mayBeEmpty, std::string& why) {
    std::unique_ptr<MemoryFile>& copy = copies_[path];
    if (copy) return copy->Name();
    // Not opened anew: that would fail for a socket and find something else where standard input was closed.
    const std::optional<std::string> bytes = ReadSource(path == kStandardInput ? "-" : path, why);
    if (!bytes) return {};
    if (bytes->empty() && !mayBeEmpty) {
        why = "it ended without a byte";
        return {};
    }
    try {
        copy = std::make_unique<MemoryFile>(*bytes);
    } catch (const Failure& failure) {
        why = failure.what();
        return {};
    }
    return copy->Name();
}

std::string SourceCopies::NameOf(const std::string& path) const {
    const auto found = copies_.find(path);
    return found != copies_.end() && found->second ? found->second->Name() : path;
}

}  // namespace zek::tool
