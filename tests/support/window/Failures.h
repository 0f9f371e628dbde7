// tests/support/window/Failures.h: what nobody has caught ahead of the message loop.
#pragma once
#include "platform/window/application.h"

#include <string>
#include <utility>

namespace test {

// Takes the place of the handler of failures as long as it lives.
class Failures {
public:
    Failures() {
        platform::setFailureHandler([this](const std::exception_ptr& failure) {
            try {
                std::rethrow_exception(failure);
            } catch (const std::exception& known) {
                m_text += std::string(known.what()) + '\n';
            }
        });
    }
    ~Failures() { platform::setFailureHandler(nullptr); }
    Failures(const Failures&) = delete;
    Failures& operator=(const Failures&) = delete;
    // What they say, each ended by LF, since the last call.
    std::string take() { return std::exchange(m_text, {}); }

private:
    std::string m_text;
};

}  // namespace test
