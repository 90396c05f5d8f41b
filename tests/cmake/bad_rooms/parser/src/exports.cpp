#include "lines.h"
#include "zekrsparser.h"
#include "zekcomp/api.h"
