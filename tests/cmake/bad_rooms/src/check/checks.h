#pragma once
#include "check/vocabulary.h"
  #  include <frontend/parse.h>
