#include "check/checks.h"
#include "zekrsparser.h"
