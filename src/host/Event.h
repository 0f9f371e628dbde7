// host/Event.h: an event that a control raises to its owner.
#pragma once
#include <functional>
#include <memory>
#include <utility>

// Holds one handler; raising an event without one does nothing. The handler may replace itself and
// may end the control that raises it: it stays whole until it returns. What it raises reaches
// whoever raised the event.
template <class... Args> class Event {
public:
    Event() = default;
    template <class F> Event& operator=(F handler) {
        m_handler = std::make_shared<std::function<void(Args...)>>(std::move(handler));
        return *this;
    }
    Event& operator=(std::nullptr_t) {
        m_handler.reset();
        return *this;
    }
    void operator()(Args... args) const {
        const auto handler = m_handler;
        if (handler != nullptr && *handler) (*handler)(std::forward<Args>(args)...);
    }

private:
    std::shared_ptr<std::function<void(Args...)>> m_handler;
};
