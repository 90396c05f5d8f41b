// Shows the sensors and the tables of a compiled image: runtime_host IMAGE
#include <cstdio>
#include <string>

#include "zekcomp/errors.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/image.h"

namespace {

// Name identifiers of keys, and field codes of the bus types; docs/compiled-image.md and docs/host.md list them all.
constexpr unsigned kID = zek::kIdKeyword | 0x08;
constexpr unsigned kWarningHigh = zek::kIdKeyword | 0x0d;
constexpr unsigned kParent = zek::kIdKeyword | 0x14;
constexpr unsigned kName = zek::kIdKeyword | 0x15;
constexpr unsigned kTypeField = 0x10000;
constexpr unsigned kRegisterField = 0x80000;
constexpr unsigned kBaseField = 0xb0000;

// What a value word stands for; the code in the slot says why it is nothing.
std::string Text(const tagGCVALUE& value) {
    if (value.dwKind == 1) return std::to_string(value.qwNumber);
    if (value.dwKind == 2) return value.pszName;
    return "nothing (code " + std::to_string(gcGetLastError()) + ")";
}

// The value of a key that a section holds once.
std::string ValueOf(tagGCSECT* section, unsigned key) {
    tagGCENTRY* entry = gcGetEntryByType(section, key);
    return entry ? Text(gcGetValueByIndex(entry, 0)) : "none";
}

void ShowSensor(tagGCSECT* sensor) {
    const std::string parent = ValueOf(sensor, kParent);
    std::printf("sensor %s: ID %s, group %u (%s), warns at %s\n", ValueOf(sensor, kName).c_str(),
                ValueOf(sensor, kID).c_str(), gcGetGroupIndex(parent), parent.c_str(),
                ValueOf(sensor, kWarningHigh).c_str());
    // The key VALUE has the empty name.
    tagGCENTRY* value = gcGetEntryByName(sensor, "", nullptr);
    std::printf("  value type %s, register %s, device %s\n", Text(gcGetValueByID(value, kTypeField)).c_str(),
                Text(gcGetValueByID(value, kRegisterField)).c_str(), Text(gcGetValueByID(value, kBaseField)).c_str());
}

void ShowTable(unsigned index) {
    unsigned char rows[zek::kTableBlockSize];
    if (!gcGetTableData(index, rows)) return;
    const std::string name = ValueOf(gcGetSectByIndex(zek::kImageTable, index), kName);
    std::printf("table %s: row 20 is %u, row 30 is %u\n", name.c_str(), rows[20], rows[30]);
}

}  // namespace

int main(int count, char** words) {
    tagMETAFILEINFO info = {};
    if (count != 2 || !gcInit(words[1], &info)) {
        std::fprintf(stderr, "no compiled image, code %u\n", gcGetLastError());
        return 1;
    }
    std::printf("format 0x%08x\n", info.dwVersion);
    const unsigned sensors = gcGetSectCount(zek::kImageSensor);
    for (unsigned i = 0; i < sensors; ++i) ShowSensor(gcGetSectByIndex(zek::kImageSensor, i));
    const unsigned tables = gcGetSectCount(zek::kImageTable);
    for (unsigned i = 0; i < tables; ++i) ShowTable(i);
    if (!gcGetSectByName(zek::kImageSensor, "Outlet")) std::printf("no sensor Outlet, code %u\n", gcGetLastError());
    gcUnInit();
    return 0;
}
