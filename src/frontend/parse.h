/// The binding of the section-file parser library and the driver that turns a source file into the model. Relies on the
/// model.
#pragma once

#include <string>

#include "zekcomp/api.h"

/// Loads the parser library and reads one source file at a time through it. Where the library is missing, its functions
/// are looked up in the process's global scope; where they are missing too, every wrapper fails quietly.
class ZEK_API CZEKParse {
public:
    CZEKParse();
    ~CZEKParse();
    CZEKParse(const CZEKParse&) = delete;
    CZEKParse& operator=(const CZEKParse&) = delete;

    /// Opens and pre-parses a file: 1, or 0 when it cannot be opened. A file that is still open is dropped, not closed.
    unsigned Start(const std::string& file);
    /// Reads every section and item of the open file into the model and closes the file.
    void Parse();
    /// Destroys the whole model.
    void End();

    // The functions of the parser library. Each fails (null or 0) when the library lacks it.
    void* RSOpenFile(const std::string& file);
    unsigned RSParse(void* file);
    void* RSEnumSection(void* file, unsigned index);
    unsigned RSGetSectInfo(void* section, std::string& name, unsigned& line);
    unsigned RSEnumItem(void* section, unsigned index, std::string& key, std::string& value, unsigned& line);
    void* RSFindSection(void* file, const std::string& name);
    unsigned RSCloseFile(void*& file);

private:
    void* m_hLibrary = nullptr;
    void* m_hFile = nullptr;
    std::string m_strFile;
};

/// The front end of the compiler calls.
extern ZEK_API CZEKParse g_Parse;
