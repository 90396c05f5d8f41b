#pragma once
#include "zekrsparser.h"
