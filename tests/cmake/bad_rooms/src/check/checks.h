#pragma once
#include <frontend/parse.h>
#include "check/vocabulary.h"
