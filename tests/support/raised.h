// tests/support/raised.h: a raised failure as one line.
#pragma once
#include "platform/base/failure.h"

namespace test {

// What call raises, as "source: message"; "nothing" when it returns. A failure with another number
// than kOwnError shows that number, too.
template <typename Call> std::string raised(Call call) {
    try {
        call();
    } catch (const Failure& failure) {
        const std::string number =
            failure.number == kOwnError ? "" : std::to_string(failure.number) + " ";
        return number + toUtf8(failure.source) + ": " + toUtf8(failure.message);
    }
    return "nothing";
}

}  // namespace test
