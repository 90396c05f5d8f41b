#include "check/vocabulary.h"
#include "../debugimage/tree.h"
#define WHERE "model/section.h"
#include WHERE
