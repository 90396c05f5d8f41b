#include "process_state.h"

#include "compile/state.h"
#include "compile/tables.h"
#include "debugimage/state.h"
#include "model/section.h"
#include "model/state.h"
#include "zekcomp/zekcomp.h"
#include "zekrsparser.h"

namespace zek::fuzz {

namespace {

void ForgetTables() {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) {
            table.names->clear();
            g_resolver.Forget(table);
        }
        if (table.numbers) table.numbers->clear();
        if (table.counter) *table.counter = table.classWord;
    }
    g_tblTableData.clear();
    ++g_changes;
}

}  // namespace

void ForgetEverything() {
    gccCompEnd();
    gcUnInit();
    ForgetTables();
    CZEKObj::m_svstrIncFiles.clear();
    g_fileIndex = {};
    CZEKSection::m_svpHSection.clear();
    g_fileListWritten = false;
    g_fileListRead = false;
    gcSetLastError(kNoError);
    gdSetLastError(kNoError);
    RSSetOpenHook(nullptr, nullptr);
}

}  // namespace zek::fuzz
