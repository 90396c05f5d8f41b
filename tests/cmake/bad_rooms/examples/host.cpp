#include "zekcomp/image.h"
#include "../parser/src/lines.h"
