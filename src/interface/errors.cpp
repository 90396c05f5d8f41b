#include "zekcomp/errors.h"

void gcSetLastError(unsigned code) { g_dwLastError = code; }

void gdSetLastError(unsigned code) { g_dwLastErrorD = code; }

unsigned gcGetLastError() { return g_dwLastError; }

unsigned gdGetLastError() { return g_dwLastErrorD; }
