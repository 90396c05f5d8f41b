// What this machine and this system take for the least that there is to do, each in a fresh process:
//   zek_floor read FILE        reads the file into fresh memory, in one call
//   zek_floor copy FILE        copies its bytes to memory that is there already
//   zek_floor scan FILE        scans its text into sections and items, once it is read
//   zek_floor enumerate FILE   opens it in the parser library and asks for every section and item
//   zek_floor touch FILE       writes to each page of as much fresh memory as the file is long
//   zek_floor chase FILE       reads each line of the cache in as much memory, in random order, each telling the next
//   zek_floor load LIBRARY     loads the library
// Prints the seconds of processor time as JSON. Exit code 1 when it cannot be done.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "boards/random.h"
#include "scan.h"
#include "watch.h"
#include "zekcomp/output.h"
#include "zekrsparser.h"

// A library that is loaded finds it here.
extern "C" void Output(unsigned, const char*, ...) {}

namespace {

using zek::bench::Watch;

[[noreturn]] void Fail(const std::string& what) { throw std::runtime_error(what); }

/// The bytes of a file, in memory that nobody used before.
struct Bytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

Bytes ReadWhole(const std::string& file) {
    const int opened = open(file.c_str(), O_RDONLY);
    struct stat status = {};
    if (opened < 0 || fstat(opened, &status) != 0) Fail("cannot open " + file);
    const auto size = static_cast<std::size_t>(status.st_size);
    // Not make_unique, which would clear it.
    Bytes bytes = {std::unique_ptr<char[]>(new char[size]), size};
    if (read(opened, bytes.data.get(), size) != status.st_size) Fail("cannot read " + file);
    close(opened);
    return bytes;
}

double Read(const std::string& file) {
    const Watch watch;
    const Bytes bytes = ReadWhole(file);
    return watch.Seconds();
}

double Copy(const std::string& file) {
    const Bytes bytes = ReadWhole(file);
    std::vector<char> there(bytes.size, 'x');
    const Watch watch;
    std::memcpy(there.data(), bytes.data.get(), bytes.size);
    // Nobody reads the copy; for all that the compiler knows, somebody does.
    asm volatile("" : : "r"(there.data()) : "memory");
    return watch.Seconds();
}

double ScanText(const std::string& file) {
    const Bytes bytes = ReadWhole(file);
    const Watch watch;
    const zek::bench::Found found = zek::bench::Scan({bytes.data.get(), bytes.size});
    const double seconds = watch.Seconds();
    if (found.items == 0) Fail("no items in " + file);
    return seconds;
}

/// Memory in small pages, as most of what a program allocates has; kept until the process ends.
void* FreshMemory(std::size_t size) {
    void* fresh = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (fresh == MAP_FAILED) Fail("no memory");
    madvise(fresh, size, MADV_NOHUGEPAGE);
    return fresh;
}

double Touch(const std::string& file) {
    const std::size_t size = ReadWhole(file).size;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* fresh = FreshMemory(size);
    const Watch watch;
    for (std::size_t i = 0; i < size; i += page) static_cast<volatile char*>(fresh)[i] = 'x';
    return watch.Seconds();
}

double Chase(const std::string& file) {
    struct alignas(64) Line {
        const Line* next;
    };
    const std::size_t count = ReadWhole(file).size / sizeof(Line);
    if (count == 0) Fail("no line of the cache in " + file);
    const std::span<Line> lines(static_cast<Line*>(FreshMemory(count * sizeof(Line))), count);
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    zek::bench::Random(1, 0, 0).Shuffle(order);
    for (std::size_t i = 0; i < count; ++i) lines[order[i]].next = &lines[order[(i + 1) % count]];
    const Line* line = &lines[order[0]];
    const Watch watch;
    for (std::size_t i = 0; i < count; ++i) line = line->next;
    const double seconds = watch.Seconds();
    // Back at the first: this way the compiler cannot leave the reading out.
    if (line != &lines[order[0]]) Fail("a line was left out");
    return seconds;
}

/// The parser library as a host has it that loads it and looks its functions up once.
struct Parser {
    void* library = dlopen(ZEK_BUILT_PARSER, RTLD_NOW);
    decltype(&RSOpenFile) open = Look<decltype(open)>("RSOpenFile");
    decltype(&RSParse) parse = Look<decltype(parse)>("RSParse");
    decltype(&RSEnumSection) enumSection = Look<decltype(enumSection)>("RSEnumSection");
    decltype(&RSGetSectInfo) sectionInfo = Look<decltype(sectionInfo)>("RSGetSectInfo");
    decltype(&RSEnumItem) enumItem = Look<decltype(enumItem)>("RSEnumItem");
    decltype(&RSCloseFile) close = Look<decltype(close)>("RSCloseFile");

    template <class Function>
    Function Look(const char* name) {
        void* function = library ? dlsym(library, name) : nullptr;
        if (!function) Fail(std::string("no ") + name + " in " ZEK_BUILT_PARSER);
        return reinterpret_cast<Function>(function);
    }
};

/// Asks for the name of a section and for each of its items, sizes first; gives the number of items.
std::size_t EnumerateItems(const Parser& parser, void* section, std::vector<char>& key, std::vector<char>& value) {
    unsigned size = 0;
    unsigned line = 0;
    parser.sectionInfo(section, nullptr, &size, &line);
    key.resize(size);
    parser.sectionInfo(section, key.data(), &size, &line);
    unsigned items = 0;
    unsigned keySize = 0;
    unsigned valueSize = 0;
    while (parser.enumItem(section, items, nullptr, &keySize, nullptr, &valueSize, &line)) {
        key.resize(keySize);
        value.resize(valueSize);
        parser.enumItem(section, items, key.data(), &keySize, value.data(), &valueSize, &line);
        ++items;
    }
    return items;
}

double Enumerate(const std::string& file) {
    const Parser parser;
    std::vector<char> key;
    std::vector<char> value;
    const Watch watch;
    void* opened = parser.open(file);
    if (!opened || !parser.parse(opened)) Fail("cannot parse " + file);
    std::size_t items = 0;
    unsigned index = 0;
    while (void* section = parser.enumSection(opened, index++)) items += EnumerateItems(parser, section, key, value);
    parser.close(&opened);
    const double seconds = watch.Seconds();
    if (items == 0) Fail("no items in " + file);
    return seconds;
}

double Load(const std::string& file) {
    const Watch watch;
    const void* library = dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL);
    const double seconds = watch.Seconds();
    if (!library) Fail(dlerror());
    return seconds;
}

struct Task {
    std::string_view name;
    double (*run)(const std::string& file);
};

constexpr Task kTasks[] = {
    {"read", Read},   {"copy", Copy},   {"scan", ScanText}, {"enumerate", Enumerate},
    {"touch", Touch}, {"chase", Chase}, {"load", Load},
};

}  // namespace

int main(int count, char** words) try {
    for (const Task& task : kTasks) {
        if (count != 3 || task.name != words[1]) continue;
        std::printf("{\"seconds\": %.9f}\n", task.run(words[2]));
        return 0;
    }
    std::fprintf(stderr, "usage: zek_floor read|copy|scan|enumerate|touch|chase|load FILE\n");
    return 2;
} catch (const std::exception& error) {
    std::fprintf(stderr, "zek_floor: %s\n", error.what());
    return 1;
}
