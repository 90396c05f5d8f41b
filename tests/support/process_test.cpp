#include "support/process_test.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace zek::test {

namespace {

constexpr char kInstalledParser[] = "/usr/tavr/lib/libzekrsparser.so.0";

int casesInThisProcess = 0;

std::string BytesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

/// The file of the parser library that serves this process: the installed copy where it was loaded, else the linked
/// one.
std::string ServingParser() {
    if (void* installed = dlopen(kInstalledParser, RTLD_LAZY | RTLD_NOLOAD)) {
        dlclose(installed);
        return kInstalledParser;
    }
    Dl_info info = {};
    void* function = dlsym(RTLD_DEFAULT, "RSOpenFile");
    return function && dladdr(function, &info) && info.dli_fname ? info.dli_fname : "none";
}

}  // namespace

void ProcessTest::SetUp() {
    ASSERT_EQ(casesInThisProcess++, 0) << "this case needs a process of its own: run it through ctest";
    const std::string serving = ServingParser();
    ASSERT_EQ(BytesOf(serving), BytesOf(ZEK_BUILT_PARSER)) << "served by " << serving << ", which is not the built one";
    std::string pattern = (std::filesystem::temp_directory_path() / "zek-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    std::filesystem::current_path(folder_);
    TakeMessages();
}

void ProcessTest::TearDown() {
    if (folder_.empty()) return;
    // What a case leaves loaded is no leak of the library's.
    gccCompEnd();
    gcUnInit();
    std::filesystem::current_path("/");
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void ProcessTest::Source(std::string_view text, const std::string& file) {
    Write(file, text);
    ASSERT_EQ(gccCompStart(file), 1U);
    gccParse();
}

unsigned ProcessTest::Check(std::string_view text) {
    Source(text);
    return gccCheck();
}

std::string ProcessTest::Errors() {
    std::istringstream all(TakeMessages());
    std::string errors;
    for (std::string line; std::getline(all, line);) {
        if (line.starts_with("Parse::load ") || line.starts_with("Parse::No more sections")) continue;
        errors += line + '\n';
    }
    return errors;
}

void ProcessTest::InChild(const std::function<void()>& half) {
    std::fflush(nullptr);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        half();
        std::fflush(nullptr);
        _exit(HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status)) << "the child was killed by signal " << WTERMSIG(status);
    ASSERT_EQ(WEXITSTATUS(status), 0) << "the child's half failed, see above";
}

void ProcessTest::Write(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(out.good()) << file;
}

std::string ProcessTest::Read(const std::filesystem::path& file) { return BytesOf(file); }

std::string FromHex(std::string_view digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        if (digit == ' ' || digit == '\n') continue;
        pair += digit;
        if (pair.size() < 2) continue;
        bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
        pair.clear();
    }
    return bytes;
}

std::string Dump(std::string_view bytes) {
    std::string text;
    char part[32];
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % 16 == 0) {
            std::snprintf(part, sizeof part, "%s%06zx ", i == 0 ? "" : "\n", i);
            text += part;
        }
        std::snprintf(part, sizeof part, " %02x", static_cast<unsigned char>(bytes[i]));
        text += part;
    }
    return text + '\n';
}

std::string Word(unsigned word) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(word >> (8 * i));
    return bytes;
}

std::string WithoutTime(std::string image) {
    if (image.size() >= 24) image.replace(20, 4, 4, '\0');
    return image;
}

}  // namespace zek::test
