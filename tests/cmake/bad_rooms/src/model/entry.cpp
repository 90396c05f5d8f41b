#include "model/entry.h"
#include "check/vocabulary.h"
#include "frontend/parse.h"
