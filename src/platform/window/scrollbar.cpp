#include "platform/window/scrollbar.h"

#include "platform/window/window_internal.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

namespace platform {

struct ScrollBar::Impl {
    explicit Impl(ScrollBar* bar, Direction way) : owner(bar), direction(way) {}

    ScrollBar* owner;  // nullptr once it is gone
    Direction direction;
    HWND hWnd = 0;
    int max = 0, value = 0, smallChange = 1, largeChange = 1;
    bool visible = true;
    bool dragged = false;  // the drag that is under way has changed the value
    bool setting = false;  // a setter of ours is running
    int wheelRest = 0;

    [[nodiscard]] QScrollBar* widget() const { return qobject_cast<QScrollBar*>(widgetOf(hWnd)); }
    [[nodiscard]] Qt::Orientation orientation() const {
        return direction == Direction::Vertical ? Qt::Vertical : Qt::Horizontal;
    }
    template <class F> bool change(F f);
    void apply();
    void moved(int newValue);
    void released();
    LRESULT turned(int delta, WPARAM keys, LPARAM lParam);
};

namespace {

class BarWidget final : public MessageWidget<QScrollBar> {
public:
    using MessageWidget<QScrollBar>::MessageWidget;

private:
    // In a long list the thumb stays where it is for many values: then there is nothing to draw.
    void sliderChange(SliderChange change) override {
        const int before = std::exchange(m_position, sliderPosition());
        const auto atAnEnd = [this](int at) { return at == minimum() || at == maximum(); };
        if (change == SliderValueChange && !atAnEnd(before) && !atAnEnd(m_position) &&
            thumbAt(before) == thumbAt(m_position)) {
            return;
        }
        QScrollBar::sliderChange(change);
    }
    [[nodiscard]] QRect thumbAt(int position) const {
        QStyleOptionSlider option;
        initStyleOption(&option);
        option.sliderPosition = option.sliderValue = position;
        return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider,
                                       this);
    }

    int m_position = 0;
};

// Keeps what a notification may end until it is over.
template <class Handler> void raise(Handler* handler) {
    if (handler == nullptr || !*handler) return;
    const Handler running = *handler;
    running();
}

}  // namespace

// Runs f on the widget, which stays until f is over, whatever a notification does. Whether there is
// one.
template <class F> bool ScrollBar::Impl::change(F f) {
    const std::shared_ptr<WindowRecord>* const found = windowTable().find(hWnd);
    QScrollBar* const bar = widget();
    if (found == nullptr || bar == nullptr) return false;
    const EventScope scope(*found);
    const bool inner = std::exchange(setting, true);
    f(*bar);
    setting = inner;
    return true;
}

void ScrollBar::Impl::apply() {
    change([this](QScrollBar& bar) {
        bar.setSingleStep(smallChange);
        bar.setPageStep(largeChange);
        bar.setMaximum(max);
        bar.setValue(value);
    });
}

void ScrollBar::Impl::moved(int newValue) {
    if (newValue == value) return;
    value = newValue;
    if (owner == nullptr) return;
    const QScrollBar* const bar = widget();
    if (!setting && bar != nullptr && bar->isSliderDown()) {
        dragged = true;
        raise(&owner->Scroll);
    } else {
        raise(&owner->Change);
    }
}

void ScrollBar::Impl::released() {
    if (std::exchange(dragged, false) && owner != nullptr) raise(&owner->Change);
}

// Small turns add up to notches of 120.
LRESULT ScrollBar::Impl::turned(int delta, WPARAM keys, LPARAM lParam) {
    const HWND parent = GetParent(hWnd);
    if ((delta > 0) != (wheelRest > 0)) wheelRest = 0;
    wheelRest += delta;
    const int whole = wheelRest / 120 * 120;
    if (whole == 0) return 0;
    wheelRest -= whole;
    return SendMessageW(parent, WM_MOUSEWHEEL, makeLParam(static_cast<std::int32_t>(keys), whole),
                        lParam);
}

ScrollBar::ScrollBar(Direction direction) : m_impl(std::make_shared<Impl>(this, direction)) {}

ScrollBar::~ScrollBar() {
    m_impl->owner = nullptr;
    if (m_impl->hWnd != 0) DestroyWindow(m_impl->hWnd);
}

bool ScrollBar::create(HWND parent, const RECT& place) {
    QWidget* const around = widgetOf(parent);
    if (hWnd() != 0 || around == nullptr) return false;
    auto widget = std::make_unique<BarWidget>(m_impl->orientation(), around);
    widget->setFocusPolicy(Qt::NoFocus);
    widget->setContextMenuPolicy(Qt::NoContextMenu);
    WindowOptions options;
    options.parent = parent;
    options.position = {place.left, place.top};
    options.size = {place.right - place.left, place.bottom - place.top};
    options.userData = reinterpret_cast<std::intptr_t>(m_impl.get());
    options.procedure = [](HWND window, std::uint32_t uMsg, WPARAM wParam,
                           LPARAM lParam) -> LRESULT {
        // The widget's connections keep it alive as long as there are messages.
        auto* const impl = reinterpret_cast<Impl*>(GetWindowLongW(window, GWL_USERDATA));
        if (uMsg == WM_MOUSEWHEEL) {
            return impl->turned(static_cast<std::int16_t>(hiWord(wParam)), loWord(wParam), lParam);
        }
        if (uMsg == WM_DESTROY) impl->hWnd = 0;
        return DefWindowProcW(window, uMsg, wParam, lParam);
    };
    const HWND window = adoptWidget(widget.get(), *widget, options);
    if (window == 0) return false;
    // Notifications come out of the library's own code, which no failure may pass through.
    QObject::connect(widget.get(), &QScrollBar::valueChanged, widget.get(),
                     [impl = m_impl](int newValue) { guarded([&] { impl->moved(newValue); }); });
    QObject::connect(widget.get(), &QScrollBar::sliderReleased, widget.get(),
                     [impl = m_impl] { guarded([&] { impl->released(); }); });
    m_impl->hWnd = window;
    m_impl->dragged = false;
    m_impl->apply();
    widget->setVisible(m_impl->visible);
    (void)widget.release();  // the window owns it
    return true;
}

HWND ScrollBar::hWnd() const { return m_impl->hWnd; }

int ScrollBar::Max() const { return m_impl->max; }
void ScrollBar::Max(int l) {
    const std::shared_ptr<Impl> impl = m_impl;  // a notification may end this object
    impl->max = std::clamp(l, 0, 32767);
    const bool done = impl->change([&](QScrollBar& bar) { bar.setMaximum(impl->max); });
    if (!done && impl->value > impl->max) impl->moved(impl->max);
}

int ScrollBar::Value() const { return m_impl->value; }
void ScrollBar::Value(int l) {
    const std::shared_ptr<Impl> impl = m_impl;
    const int newValue = std::clamp(l, 0, impl->max);
    const bool done = impl->change([&](QScrollBar& bar) { bar.setValue(newValue); });
    if (!done) impl->moved(newValue);
}

int ScrollBar::SmallChange() const { return m_impl->smallChange; }
void ScrollBar::SmallChange(int l) {
    m_impl->smallChange = std::clamp(l, 1, 32767);
    m_impl->apply();
}
int ScrollBar::LargeChange() const { return m_impl->largeChange; }
void ScrollBar::LargeChange(int l) {
    m_impl->largeChange = std::clamp(l, 1, 32767);
    m_impl->apply();
}

bool ScrollBar::Visible() const { return m_impl->visible; }
void ScrollBar::Visible(bool b) {
    if (m_impl->visible == b) return;
    m_impl->visible = b;
    if (QScrollBar* const bar = m_impl->widget()) bar->setVisible(b);
}

int ScrollBar::thickness() const {
    QScrollBar* const bar = m_impl->widget();
    QStyleOptionSlider option;
    option.orientation = m_impl->orientation();
    if (bar != nullptr) option.initFrom(bar);
    const QStyle* const style = bar != nullptr ? bar->style() : QApplication::style();
    return style->pixelMetric(QStyle::PM_ScrollBarExtent, &option, bar);
}

}  // namespace platform
