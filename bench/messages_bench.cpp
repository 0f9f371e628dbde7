// Messages to a window: without attachments, with attachments to other messages, through one and
// four sinks.
#include "offScreen.h"
#include "platform/window/window.h"
#include "win/MSubclass.h"

#include <array>
#include <benchmark/benchmark.h>

namespace {

using namespace platform;
constexpr std::uint32_t kMessage = WM_MOUSEWHEEL, kOther = WM_APP;

class Sink : public ISubclass {
public:
    std::int64_t calls = 0;

private:
    void ISubclass_WindowProc(bool, bool&, LRESULT& lReturn, HWND, std::uint32_t, WPARAM,
                              LPARAM) override {
        ++calls;
        lReturn += 1;
    }
};

LRESULT answer(HWND, std::uint32_t, WPARAM wParam, LPARAM) { return wParam; }

HWND plainWindow() {
    startOffScreen();
    WindowOptions options;
    options.kind = WindowKind::Main;
    options.procedure = answer;
    return createWindow(options);
}

void send(benchmark::State& state, std::int64_t sinks, bool toTheSinks, bool manyMessages) {
    const HWND hWnd = plainWindow();
    std::array<Sink, 4> all;
    for (std::int64_t i = 0; i < sinks; ++i) {
        Sink& sink = all[static_cast<std::size_t>(i)];
        SubclassAttach(sink, hWnd, kMessage, smBefore);
        // A text box listens to some thirty messages.
        for (std::uint32_t m = 0; manyMessages && m < 30; ++m) {
            SubclassAttach(sink, hWnd, WM_KEYDOWN + m, smBefore);
        }
    }
    const std::uint32_t uMsg = toTheSinks ? kMessage : kOther;
    for (auto _ : state) benchmark::DoNotOptimize(SendMessageW(hWnd, uMsg, 1, 2));
    DestroyWindow(hWnd);
}

void noAttachment(benchmark::State& state) { send(state, 0, false, false); }
void otherMessage(benchmark::State& state) { send(state, 1, false, false); }
void otherMessageOfABusyWindow(benchmark::State& state) { send(state, 1, false, true); }
void throughSinks(benchmark::State& state) { send(state, state.range(0), true, false); }

void attachAndDetach(benchmark::State& state) {
    const HWND hWnd = plainWindow();
    Sink sink;
    for (auto _ : state) {
        for (std::uint32_t m = 0; m < 30; ++m) SubclassAttach(sink, hWnd, WM_KEYDOWN + m, smBefore);
        for (std::uint32_t m = 0; m < 30; ++m) SubclassDetach(sink, hWnd, WM_KEYDOWN + m);
    }
    DestroyWindow(hWnd);
}

BENCHMARK(noAttachment);
BENCHMARK(otherMessage);
BENCHMARK(otherMessageOfABusyWindow);
BENCHMARK(throughSinks)->Arg(1)->Arg(4);
BENCHMARK(attachAndDetach);

}  // namespace
