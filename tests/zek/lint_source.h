/// What lint finds in a source. Relies on command.h.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "zek/command.h"

namespace zek::test {

inline const std::string kWords = "[INCLUDE]\nFILE = zek/words.zek\n";
inline const std::string kAction =
    "[ACTION]\nNAME = Step\nARGNUMBER = 1\nVALUE = VT_WRITE,0,8,BUSTYPE_SMBUS,0x2C,ARG1\n";
inline const std::string kRepeater = kWords + kAction + "[REPEATER]\n";
inline const std::string kView = "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS =\n";
inline const std::string kTable = "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 0\n";

class ZekLint : public ZekTest {
protected:
    /// What the rules find, but for the unused, which are not what most rows are about: LINE:COLUMN: text [code], one a
    /// line.
    static std::string Found(const std::string& source, const std::string& only = "L") {
        Write("a.zek", source);
        return FoundIn({"check", "a.zek"}, only);
    }

    static std::string FoundIn(const Strings& arguments, const std::string& only) {
        const Result result = Zek(arguments);
        EXPECT_EQ(result.signal, 0);
        std::istringstream lines(result.err);
        std::string found;
        for (std::string line; std::getline(lines, line);) {
            if (line.find(" [" + only) == line.npos || !line.ends_with(']')) continue;
            if (only == "L" && line.find(" [L13") != line.npos) continue;
            const std::size_t warning = line.find(": warning: ");
            EXPECT_NE(warning, line.npos) << line;
            found += line.erase(warning, std::string(": warning").size()).substr(line.find(':') + 1) + '\n';
        }
        return found;
    }

    /// What one rule finds.
    struct Row {
        const char* code;
        std::string source;
        std::string found;  ///< without the code
    };

    static void Expect(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.source);
            const std::string code = " [" + std::string(row.code) + "]\n";
            EXPECT_EQ(Found(row.source, row.code), row.found.empty() ? "" : row.found + code);
        }
    }
};

}  // namespace zek::test
