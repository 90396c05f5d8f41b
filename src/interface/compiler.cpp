#include "zekcomp/compiler.h"

#include "check/section_checks.h"
#include "compile/compile.h"
#include "compile/image_file.h"
#include "compile/init_tables.h"
#include "debugimage/debug_image.h"
#include "frontend/parse.h"

unsigned gccCompStart(const std::string& file) { return g_Parse.Start(file); }

void gccParse() { g_Parse.Parse(); }

unsigned gccCheck() { return zek::CheckModel(); }

unsigned gccOutputD(const std::string& file) { return WriteMetaD(file); }

unsigned gccOutput(const std::string& file) {
    // Every step runs whatever the ones before it gave, so that a failing compilation may still leave an image: hosts
    // rely on it.
    unsigned done = InitTblD();
    done &= Compile();
    done &= WriteMeta(file);
    CompDestory();
    return done & 1;
}

void gccCompEnd() { g_Parse.End(); }
