/// The whole published interface of the library in one header.
#pragma once

#include "zekcomp/compiler.h"
#include "zekcomp/debug_image.h"
#include "zekcomp/errors.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/image.h"
#include "zekcomp/image_view.h"
#include "zekcomp/operators.h"
#include "zekcomp/output.h"
#include "zekcomp/predefined.h"
#include "zekcomp/records.h"
#include "zekcomp/value_shapes.h"
