#include "frontend/parser_host.h"

#include <dlfcn.h>

#include <utility>

namespace zek::test {

namespace {

int casesInThisProcess = 0;

}  // namespace

Script& TheScript() {
    static Script script;
    return script;
}

void ParserHost::SetUp() {
    ASSERT_EQ(casesInThisProcess++, 0) << "this case needs a process of its own: run it through ctest";
    constexpr char installed[] = "/usr/tavr/lib/libzekrsparser.so.0";
    ASSERT_EQ(dlopen(installed, RTLD_LAZY | RTLD_NOLOAD), nullptr)
        << installed << " serves this process; these cases need a machine on which it is not installed";
    ASSERT_EQ(dlsym(RTLD_DEFAULT, "RSOpenFile"), nullptr) << "a parser library is linked";
}

void ParserHost::Load(const std::string& library) {
    ASSERT_NE(dlopen((ZEK_SCRIPTED_PARSERS "/" + library + ".so").c_str(), RTLD_NOW | RTLD_GLOBAL), nullptr)
        << dlerror();
}

std::string ParserHost::Calls() { return std::exchange(TheScript().calls, {}); }

}  // namespace zek::test
