/// The base of every object of the source model, and the list of source files that all objects index. Relies on
/// bytes.h.
#pragma once

#include <string>
#include <vector>

#include "model/bytes.h"
#include "model/type_ids.h"
#include "zekcomp/api.h"

class ZEK_API CZEKObj {
public:
    CZEKObj();
    CZEKObj(const CZEKObj&) = delete;
    CZEKObj& operator=(const CZEKObj&) = delete;
    virtual ~CZEKObj();

    /// Records the source file, adding it to the list of files when it is new.
    void SetFile(const std::string& file);
    /// The source file, split at its last backslash: mode 0 the part behind it, any other mode the part up to and
    /// including it. Empty when the file index lies outside the list.
    std::string GetFile(int mode);

    /// Fills `out` with the common fields; the first call of the process adds the list of source files.
    void GetBuffer(std::vector<unsigned char>& out);
    /// Restores the common fields; the first call of the process also appends to the list of source files. Throws
    /// `std::out_of_range` when the buffer ends early.
    void SetBuffer(const std::vector<unsigned char>& in);

    /// Every source file name met, in order of first appearance. Never cleared.
    static std::vector<std::string> m_svstrIncFiles;

    unsigned m_dwType = 0;
    tagNOTATION m_eNotation{};
    unsigned m_dwLine = 0;  ///< of a section: of its header; from 1
    std::string m_strName;  ///< of a section: its keyword as written; of an entry: its key
    unsigned m_dwFile = 0;  ///< index into m_svstrIncFiles
};
