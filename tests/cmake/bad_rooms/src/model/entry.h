#pragma once
#include "model/section.h"
#include "check/vocabulary.h"
