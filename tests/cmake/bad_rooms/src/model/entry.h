#pragma once
#include "check/vocabulary.h"
#include "model/section.h"
