// The error slots. Set by the queries and by the host; never reset otherwise.
#include "zekcomp/errors.h"

unsigned g_dwLastError = zek::kNoError;
unsigned g_dwLastErrorD = zek::kNoError;
