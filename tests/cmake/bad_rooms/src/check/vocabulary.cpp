#include "check/vocabulary.h"
#include "check/checks.h"
