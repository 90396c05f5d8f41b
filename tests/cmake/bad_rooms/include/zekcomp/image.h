#pragma once
#include "model/section.h"
#include "zekcomp/api.h"
