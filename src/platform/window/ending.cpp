#include "platform/window/ending.h"

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace platform {
namespace {

constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};

volatile std::sig_atomic_t g_tell = -1;  // where a signal is told to the message loop

void tell(int number) {
    const int before = errno;
    const auto byte = static_cast<unsigned char>(number);
    if (::write(g_tell, &byte, 1) != 1) {  // the pipe is full of them: one is enough
    }
    errno = before;
}

}  // namespace

struct EndWatch::Impl {
    explicit Impl(std::function<void()> f_);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    void end() {
        if (f) std::exchange(f, {})();
    }
    void hear();
    static void endWithoutDisplay();

    static inline Impl* alive = nullptr;
    std::function<void()> f;
    std::array<int, 2> pipe{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;
    std::array<struct sigaction, kSignals.size()> before{};
};

EndWatch::Impl::Impl(std::function<void()> f_) : f(std::move(f_)) {
    alive = this;
    // The library ends the process by exit() when it finds the display gone.
    static const bool registered = std::atexit(endWithoutDisplay) == 0;
    (void)registered;
    if (::pipe2(pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;  // signals end it at once, then
    g_tell = pipe[1];
    notifier = std::make_unique<QSocketNotifier>(pipe[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { hear(); });
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &before[i]);
        if (before[i].sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = tell;
        action.sa_flags = SA_RESTART | SA_RESETHAND;  // the second one ends it at once
        ::sigaction(kSignals[i], &action, nullptr);
    }
}

EndWatch::Impl::~Impl() {
    alive = nullptr;
    if (pipe[0] < 0) return;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &before[i], nullptr);
    }
    notifier.reset();  // ahead of what it watches
    ::close(pipe[0]);
    ::close(pipe[1]);
}

void EndWatch::Impl::endWithoutDisplay() {
    if (alive == nullptr) return;
    alive->end();
    // What else lives to the end of the process are windows, which nobody can take down any more.
    (void)std::fflush(nullptr);
    ::_exit(EXIT_FAILURE);
}

void EndWatch::Impl::hear() {
    unsigned char number = 0;
    if (::read(pipe[0], &number, 1) != 1) return;
    end();
    std::raise(number);
}

EndWatch::EndWatch(std::function<void()> f) : m_impl(std::make_unique<Impl>(std::move(f))) {}
EndWatch::~EndWatch() = default;

}  // namespace platform
