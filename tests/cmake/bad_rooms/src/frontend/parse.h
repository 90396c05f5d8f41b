#pragma once
#include "model/section.h"
