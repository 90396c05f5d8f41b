#include "model/entry.h"
#include "support/recorder.h"
#include "harness_of_yesterday.h"
