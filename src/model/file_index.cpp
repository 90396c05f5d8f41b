#include "model/file_index.h"

#include <algorithm>

namespace zek {

unsigned FileIndex::PositionIn(std::vector<std::string>& files, const std::string& file) {
    if (last_ < files.size() && files[last_] == file) return last_;
    unsigned& position = positions_[file];
    if (position >= files.size() || files[position] != file) {
        const auto place = std::find(files.begin(), files.end(), file);
        position = static_cast<unsigned>(place - files.begin());
        if (place == files.end()) files.push_back(file);
    }
    return last_ = position;
}

}  // namespace zek
