#include "shared_allows.h"

#include <sys/stat.h>

#include <nlohmann/json.hpp>

namespace zek::tool {
namespace {

using nlohmann::json;

using Bytes = std::vector<unsigned char>;

/// A path may hold any bytes.
json Written(const Place& place) {
    return {Bytes(place.path.begin(), place.path.end()), place.line, place.column, place.length};
}

Place ReadPlace(const json& row) {
    const auto path = row[0].get<Bytes>();
    return {{path.begin(), path.end()}, row[1], row[2], row[3]};
}

}  // namespace

std::string WrittenShared(const std::vector<SharedAllow>& all) {
    json written = json::array();
    for (const auto& [finding, idle] : all) {
        json way = json::array();
        for (const Place& item : finding.way) way.push_back(Written(item));
        // The message names a code that there is.
        written.push_back({Written(finding.place), finding.message, finding.code, finding.severity, way, idle});
    }
    return written.dump();
}

void SharedAllows::Add(const std::string& written) {
    for (const json& row : json::parse(written)) {
        Finding unused;
        unused.place = ReadPlace(row[0]);
        unused.message = row[1];
        unused.code = row[2];
        unused.severity = row[3];
        if (!row[4].empty()) {
            std::vector<Place> way;
            for (const json& item : row[4]) way.push_back(ReadPlace(item));
            ways_.try_emplace(unused.place.path, std::move(way));
        }
        struct stat info {};
        if (stat(unused.place.path.c_str(), &info) != 0) continue;
        const Key key = {info.st_dev, info.st_ino, unused.place.line, unused.place.column};
        const bool idle = row[5];
        all_.try_emplace(key, SharedAllow{std::move(unused), true}).first->second.idle &= idle;
    }
}

std::vector<SourceFindings> SharedAllows::Unused(std::size_t most) const {
    std::map<std::string, SourceFindings> byFile;
    for (const auto& [key, allow] : all_) {
        if (!known_ || !allow.idle) continue;
        SourceFindings& file = byFile[allow.unused.place.path];
        file.source = allow.unused.place.path;
        if (file.findings.size() < most) {
            file.findings.push_back(allow.unused);
            const auto way = ways_.find(file.source);
            if (way != ways_.end()) file.findings.back().way = way->second;
        } else {
            ++file.left[static_cast<std::size_t>(allow.unused.severity)];
        }
    }
    std::vector<SourceFindings> all;
    for (auto& [path, file] : byFile) all.push_back(std::move(file));
    return all;
}

}  // namespace zek::tool
