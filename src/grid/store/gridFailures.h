// grid/store/gridFailures.h: the failures that the store raises, each under one name.
#pragma once
#include "platform/base/failure.h"

// The numbers below 1000 are those of the language's own run-time failures.
[[noreturn]] inline void raiseTypeMismatch() { throw Failure(13, u"", u"Type mismatch"); }
[[noreturn]] inline void raiseOverflow() { throw Failure(6, u"", u"Overflow"); }
[[noreturn]] inline void raiseOutOfMemory() { throw Failure(7, u"", u"Out of memory"); }
[[noreturn]] inline void raiseSubscriptOutOfRange() {
    throw Failure(9, u"", u"Subscript out of range");
}
