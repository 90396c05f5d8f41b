// The process-wide variable of the front end.
#include "frontend/parse.h"

// Made while the library is loaded, which loads the parser library; a file is open in it from gccCompStart to gccParse.
CZEKParse g_Parse;
