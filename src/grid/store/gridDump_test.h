// grid/store/gridDump_test.h: values and failures of the grid as short texts, for tables of tests.
#pragma once
#include "grid/store/GridValue.h"
#include "platform/base/failure.h"

#include <string>

// "empty", "int 5", "num 1.5", "true", "text abc"
inline std::string dump(const GridValue& v) {
    switch (v.type()) {
    case GridValueType::kEmpty:
        return "empty";
    case GridValueType::kInteger:
        return "int " + toUtf8(v.toText());
    case GridValueType::kDouble:
        return "num " + toUtf8(v.toText());
    case GridValueType::kBoolean:
        return v.toBoolean() ? "true" : "false";
    case GridValueType::kText:
        return "text " + toUtf8(v.text());
    }
    return "?";
}

// What the call gives, or the failure that it raises: "13 Type mismatch", "80040001 AddRow: words".
template <typename Call> std::string dumpOf(Call call) {
    try {
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
            return "done";
        } else {
            return dump(GridValue(call()));
        }
    } catch (const Failure& failure) {
        const std::string number =
            failure.number == kOwnError ? "80040001" : std::to_string(failure.number);
        const std::string source = failure.source.empty() ? "" : toUtf8(failure.source) + ": ";
        return number + " " + source + toUtf8(failure.message);
    }
}
