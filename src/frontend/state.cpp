// The process-wide variable of the front end.
// The streams are made ready first: g_Parse logs while the library is loaded, and the host's Output may write to them.
#include <iostream>

#include "frontend/parse.h"

// Made while the library is loaded, which loads the parser library; a file is open in it from gccCompStart to gccParse.
CZEKParse g_Parse;
