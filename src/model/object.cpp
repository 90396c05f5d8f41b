#include "model/object.h"

#include "model/state.h"

CZEKObj::CZEKObj() = default;

CZEKObj::~CZEKObj() = default;

void CZEKObj::SetFile(const std::string& file) { m_dwFile = zek::g_fileIndex.PositionIn(m_svstrIncFiles, file); }

std::string CZEKObj::GetFile(int mode) {
    if (m_dwFile >= m_svstrIncFiles.size()) return {};
    const std::string& file = m_svstrIncFiles[m_dwFile];
    // Only the backslash separates, on every system: a path written with "/" is all base name. Hosts rely on it.
    const std::size_t base = file.rfind('\\') + 1;
    return mode == 0 ? file.substr(base) : file.substr(0, base);
}
