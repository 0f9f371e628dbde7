// platform/base/failure.h: a failure that must not pass unseen.
#pragma once
#include "platform/base/text.h"

#include <exception>

constexpr std::int32_t kOwnError = static_cast<std::int32_t>(0x80040001);

// Raised by operations whose header says so. source names the operation, message is for the user.
struct Failure : std::exception {
    Failure(std::int32_t number_, Text source_, Text message_)
        : number(number_), source(std::move(source_)), message(std::move(message_)),
          m_what(toUtf8(message)) {}
    [[nodiscard]] const char* what() const noexcept override { return m_what.c_str(); }

    std::int32_t number;
    Text source;
    Text message;

private:
    std::string m_what;
};
