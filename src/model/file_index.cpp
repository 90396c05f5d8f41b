#include "model/file_index.h"

namespace zek {

unsigned FileIndex::PositionIn(std::vector<std::string>& files, const std::string& file) {
    if (indexed_ > files.size()) {
        positions_.clear();
        indexed_ = 0;
    }
    for (; indexed_ < files.size(); ++indexed_) positions_.emplace(files[indexed_], static_cast<unsigned>(indexed_));
    const auto [place, added] = positions_.emplace(file, static_cast<unsigned>(files.size()));
    if (added) {
        files.push_back(file);
        ++indexed_;
    }
    return place->second;
}

}  // namespace zek
