#pragma once
#include "zekcomp/api.h"
#include "model/section.h"
