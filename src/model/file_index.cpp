#include "model/file_index.h"

#include <algorithm>

namespace zek {

unsigned FileIndex::PositionIn(std::vector<std::string>& files, const std::string& file) {
    if (last_ < files.size() && files[last_] == file) return last_;
    if (files.size() <= kSmall) size_ = 0;
    if (files.size() > kSmall && size_ != files.size()) Read(files);
    const unsigned position = Find(files, file);
    if (position == files.size()) files.push_back(file);
    positions_.Add(file, position) = position;
    // A long list was read whole, and stays so.
    if (position == size_ && position > kSmall) size_ = files.size();
    return last_ = position;
}

unsigned FileIndex::Find(const std::vector<std::string>& files, const std::string& file) const {
    const unsigned* position = positions_.Find(file);
    if (position && *position < files.size() && files[*position] == file) return *position;
    // A new name of a long list is none that it has; any other stands elsewhere now.
    const bool isNew = !position && files.size() > kSmall;
    const auto place = isNew ? files.end() : std::find(files.begin(), files.end(), file);
    return static_cast<unsigned>(place - files.begin());
}

void FileIndex::Read(const std::vector<std::string>& files) {
    size_ = 0;
    positions_.Restart(files.size());
    for (unsigned position = 0; const std::string& file : files) positions_.Add(file, position++);
    size_ = files.size();
}

}  // namespace zek
