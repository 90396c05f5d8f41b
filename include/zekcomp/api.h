/// The mark of what the library exports. Relies on nothing.
#pragma once

#define ZEK_API __attribute__((visibility("default")))
