// What the library says while it loads and reads, and of debug images.
#include "code_table.h"

namespace zek::tool {
namespace {

constexpr CodeRow kReading[] = {
    {"E001", Level::kError, "Parse::Get section(NO. = %u,Index=%u) name failed.",
     "The parser library did not give the name of a section, which is left out. The library goes on, but the image "
     "would "
     "lack the section, so that `zek` writes none.",
     "", "Ours always gives it; look for a wrong or damaged parser library."},
    {"E002", Level::kError, "Create section(%u, %s) object failed.",
     "A section of that name does not exist; it is left out with its items. The library goes on, but the image would "
     "lack "
     "what the section describes, so that `zek` writes none. An empty name means items before the first header.",
     "[SENSR]\nNAME = Inlet\n",
     "Spell it as in [Sections and keys](language.md#sections-and-keys), in capitals, with nothing but a comment after "
     "the `]`. Put a header above items that have none, or make them comments."},
    {"E003", Level::kError, "Warning[%s:%u], [%s]:%s FILE %s cannot be loaded.",
     "The file was found nowhere, cannot be read, is being read already (it includes itself), or 256 files are open "
     "inside "
     "one another, or as many were read as `--max-files` allows. The notes tell which, where it was looked for, and "
     "how "
     "the files include each other. The library takes it for a warning, but the image would lack what the file "
     "describes, so that `zek` writes none.",
     "[INCLUDE]\nFILE = missing.zek\n",
     "Correct the path, name the folder with `-I`, or take away one of the items that go round in a circle."},
    {"E004", Level::kError, "CZEKEntry, m_ZekEntryData.Create(%u) failed.",
     "An entry of an unknown class, with its type.", "", "No source leads to it; report it."},
    {"W001", Level::kHidden, "Parse::load rsparsea(%s) failed.",
     "The section-file parser library is not at that path, so no source can be opened unless the host has loaded a "
     "parser "
     "library itself. It comes once at the start and once for each file that is included. `zek` brings one along and "
     "shows this with `--verbose` only.",
     "", "Install the parser library where hosts do not bring one along."},
    {"W002", Level::kHidden, "Parse::No more sections(total = %u).",
     "Not a problem: a file has been read to its end, with so many sections. `zek` shows it with `--verbose` only.",
     "[DEFINE]\nANY = 1\n", "There is nothing to do."},
    {"W003", Level::kHidden, "Add Item(NO. = %u) of section(%s) failed.",
     "The item with that number in its section was not taken. W004 follows and tells where; `zek` shows this one with "
     "`--verbose` only.",
     "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\nCOLOUR = red\n", "See W004."},
    {"W004", Level::kWarning, "Warning[%s:%u]: [%s]:%s, This ENTRY is ignored because of invalid entry name.",
     "[QUORZEK] or [GROUP] has no such key; the item is left out.",
     "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\nCOLOUR = red\n", "Correct the key or remove the item."},
    {"W005", Level::kWarning, "Error[%s:%u]: [%s]:%s, %s has not been defined and is not a valid number.",
     "A word whose value is a word that stands below. The check finds that value, so this does not fail, but the word "
     "has "
     "not been defined: every use of it fails with E106.",
     "[DEFINE]\nINLET = FIRST\nFIRST = 0x48\n", "Define the other word first."},
};

constexpr CodeRow kImages[] = {
    {"E401", Level::kError, "ERROR: Create debug file %s failed.",
     "The debug image cannot be written. (A compiled image that cannot be written gives no message, only the result "
     "0.)",
     "", "Look at the folder, its rights and the space on the disk."},
    {"E402", Level::kError, "ERROR: Open debug file %s failed.",
     "The debug image to be read is not there or cannot be read.", "", "Correct the name."},
    {"E403", Level::kError, "ERROR: File %s is invalid.", "The file is no debug image.", "",
     "Mind that the compiled image is another file."},
    {"E404", Level::kError, "ERROR: The version of file %s is not support.",
     "The debug image has another format version.", "", "Compile again with this library."},
};

constexpr CodeGroup kGroups[] = {
    {"While loading and reading", "", Origin::kLibrary, kReading},
    {"Images", "Hosts that read debug images get these; `zek` verifies an image first.", Origin::kLibrary, kImages},
};

}  // namespace

std::span<const CodeGroup> ReadingCodes() { return kGroups; }

}  // namespace zek::tool
