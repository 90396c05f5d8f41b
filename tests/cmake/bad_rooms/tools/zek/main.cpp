#include <CLI/CLI.hpp>
#include "harness.h"
#include "model/section.h"
#include "zekcomp/image.h"
#include "zekrsparser.h"
#include "support/recorder.h"
