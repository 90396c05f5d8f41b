#pragma once
#include <string>
#include "zekcomp/api.h"
