#include "frontend/parse.h"
#include "frontend/messages.h"
