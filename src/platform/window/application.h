// platform/window/application.h: the start of the window system and the one message loop.
#pragma once
#include "platform/base/text.h"

#include <exception>
#include <functional>
#include <memory>

namespace platform {

struct ApplicationOptions {
    Text name = u"Quillmere";  // of the program, as the desktop shows it
    bool offScreen = false;    // windows live without a display, in colours and sizes that don't
                               // depend on a desktop: for pictures and tests
};

// The window system, from construction to destruction; one at a time. Windows, timers and dialogs
// exist only in between; what is left is destroyed at the end.
class Application {
public:
    // Why no window can be shown here (no display, or no permission to use it), as a sentence for
    // the user; empty when all is well.
    [[nodiscard]] static Text obstacle(const ApplicationOptions& options);

    // argc and argv are those of main; switches of the window system (such as -display) are taken
    // out. Raises kOwnError, source "Application", with the sentence of obstacle when there is one.
    Application(int& argc, char** argv, const ApplicationOptions& options);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    int run();  // the message loop, until PostQuitMessage; gives its code

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

// Ends the message loop and all that run inside it.
void PostQuitMessage(int code);
// Handles the messages that are there and returns.
void pumpMessages();

// Gets every failure that a message, a timer or a filter raised and nobody caught, where the
// message loop would be the next to see it. Without a handler the failure is reported on standard
// error. The program goes on in both cases.
using FailureHandler = std::function<void(const std::exception_ptr& failure)>;
void setFailureHandler(FailureHandler handler);

}  // namespace platform
