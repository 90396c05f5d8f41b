#include "zekcomp/compiler.h"

#include "check/section_checks.h"
#include "compile/compile.h"
#include "compile/image_file.h"
#include "debugimage/debug_image.h"
#include "frontend/parse.h"

unsigned gccCompStart(const std::string& file) { return g_Parse.Start(file); }

void gccParse() { g_Parse.Parse(); }

unsigned gccCheck() { return zek::CheckModel(); }

unsigned gccOutputD(const std::string& file) { return WriteMetaD(file); }

unsigned gccOutput(const std::string& file) {
    const unsigned written = zek::WriteModel(file);
    CompDestory();
    return written;
}

void gccCompEnd() { g_Parse.End(); }
