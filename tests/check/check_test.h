/// What the tests of the checks share: sound sections to put the one in question among, and ways into the model. Relies
/// on process_test.h.
#pragma once

#include <stdexcept>
#include <string>

#include "model/section.h"
#include "support/process_test.h"

namespace zek::test {

/// A word for every value type that rules name, the two bus types, and names that stand for numbers.
inline constexpr char kWords[] =
    "[DEFINE]\nT0=0\nT1=1\nT2=2\nT3=3\nT4=4\nT5=5\nT6=6\nT7=7\nT8=8\nT9=9\nT10=10\nT11=11\nT12=12\n"
    "T13=13\nT50=50\nT100=100\n"
    "T101=101\nT102=102\nT103=103\nT104=104\nT105=105\nTMAX=0xFFFFFFFF\nBUSTYPE_SMBUS=1\nBUSTYPE_SIMPLEIOPORT=2\n"
    "ZERO=0\nSEVEN=7\n";

// Sound sections, one item a line in the order of the arguments; what else the kind needs stands behind.
inline std::string Group(const std::string& name, const std::string& parent = "0") {
    return "[GROUP]\nNAME=" + name + "\nPARENT=" + parent + "\nCHILDGROUP=0\n";
}
inline std::string Device(const std::string& name, const std::string& id) {
    return "[DEVICE]\nNAME=" + name + "\nID=" + id + "\nINITFLAG=0\nCONTROLMASK=0\n";
}
inline std::string Sensor(const std::string& name, const std::string& id, const std::string& parent = "ROOT") {
    return "[SENSOR]\nNAME=" + name + "\nID=" + id + "\nPARENT=" + parent +
           "\nTYPE=1\nINITFLAG=0\nCONTROLMASK=0\nVALUE=T0\n";
}
inline std::string TavrGroup(const std::string& name, const std::string& id, const std::string& pid,
                             const std::string& sensors) {
    return "[TAVRGROUP]\nNAME=" + name + "\nID=" + id + "\nPID=" + pid + "\nSENSORS=" + sensors + "\n";
}

/// A source and what the check says of it.
struct CheckedRow {
    const char* name;
    std::string source;
    unsigned valid;
    std::string errors;
};

class CheckTest : public ProcessTest {
protected:
    /// The index-th section of a type; throws when there is none.
    static CZEKSection& SectionOf(unsigned type, unsigned index = 0) { return *FindSectHead(type)->at(index); }
    /// The first entry of this key; throws when there is none.
    static CZEKEntry& EntryOf(const CZEKSection& section, const std::string& key) {
        for (CZEKEntry* entry : section.m_vpEntry) {
            if (entry->m_strName == key) return *entry;
        }
        throw std::invalid_argument(key);
    }
    void ExpectOutcome(const CheckedRow& row) {
        EXPECT_EQ(Check(row.source), row.valid);
        EXPECT_EQ(Errors(), row.errors);
    }
};

class CheckedSource : public CheckTest, public testing::WithParamInterface<CheckedRow> {};

}  // namespace zek::test
