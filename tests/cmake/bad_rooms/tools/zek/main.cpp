#include <CLI/CLI.hpp>
#include "model/section.h"
#include "zekcomp/image.h"
#include "zekrsparser.h"
