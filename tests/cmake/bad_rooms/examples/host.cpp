#include "../parser/src/lines.h"
#include "zekcomp/image.h"
