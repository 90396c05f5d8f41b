#include "../debugimage/tree.h"
#include "check/vocabulary.h"
#define WHERE "model/section.h"
#include WHERE
