// Compiles the source named first to the image named second and prints the name of its first group.
#include <zekcomp/zekcomp.h>
#include <zekrsparser.h>

#include <cstdarg>
#include <cstdio>

extern "C" void Output(unsigned, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
}

int main(int count, char** words) {
    if (count != 4) return 2;
    RSAddSearchDir(words[3]);
    if (!gccCompStart(words[1])) return 1;
    gccParse();
    if (!gccCheck() || !gccOutput(words[2])) return 1;
    gccCompEnd();
    if (!gcInit(words[2], nullptr)) return 3;
    tagGCENTRY* name = gcGetEntryByType(gcGetSectByIndex(zek::kImageGroup, 0), 0x02000015);
    std::printf("group %s\n", gcGetValueByIndex(name, 0).pszName);
    gcUnInit();
    return 0;
}
