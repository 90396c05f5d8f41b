#include <CLI/CLI.hpp>
#include "zekcomp/image.h"
#include "zekrsparser.h"
#include "model/section.h"
