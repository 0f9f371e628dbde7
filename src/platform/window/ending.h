// platform/window/ending.h: the end of the process that the message loop was not asked for.
#pragma once
#include <functional>
#include <memory>

namespace platform {

// As long as it lives, f is called, once, before the process ends because the display has gone
// (with status 1 and without any other work at its exit), or because SIGTERM, SIGHUP or SIGINT asks
// for it; one of these that was ignored stays ignored. A signal waits for the message loop, so that
// no piece of work is cut short, and then ends the process as it would have at once; a second one
// does not wait. No message is handled any more, nothing can be shown, and f must not raise. Make
// it inside of an Application, one at a time, once the windows are there: what f uses must be
// older.
class EndWatch {
public:
    explicit EndWatch(std::function<void()> f);
    ~EndWatch();
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace platform
