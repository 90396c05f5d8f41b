/// The texts of the model. Relies on nothing.
#pragma once

namespace zek {

inline constexpr char kEntryDataFailed[] = "CZEKEntry, m_ZekEntryData.Create(%u) failed.\n";
inline constexpr char kFileNotLoaded[] =
    "Warning[%s:%u], [%s]:%s FILE %s cannot be loaded.\n";  // sic: commas as they are

}  // namespace zek
