#include "lines.h"
#include "zekcomp/api.h"
#include "zekrsparser.h"
