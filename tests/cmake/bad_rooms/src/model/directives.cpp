#include "frontend/messages.h"
#include "frontend/parse.h"
