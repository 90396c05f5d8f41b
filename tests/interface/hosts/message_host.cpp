// A host that reads a source which is not there; what becomes of the messages hangs on what it is linked with.
#include <cstdio>

#include "zekcomp/compiler.h"

int main() {
    std::printf("started: %u\n", gccCompStart("none.zek"));
    gccParse();
    gccCompEnd();
    std::puts("done");
}
