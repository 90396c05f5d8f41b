/// Setting a slot and giving the result in one go, so that no query ends without having set its slot. Relies on
/// errors.h.
#pragma once

#include "zekcomp/errors.h"

namespace zek {

// The slots are set in place: most queries are a few instructions, and a call would be a good part of them.

/// For the slot of the compiled-image queries.
template <class Result>
Result AnswerGc(ErrorCode code, Result result) {
    g_dwLastError = code;
    return result;
}

/// For the slot of the debug-image queries.
template <class Result>
Result AnswerGd(ErrorCode code, Result result) {
    g_dwLastErrorD = code;
    return result;
}

}  // namespace zek
