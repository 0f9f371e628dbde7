// Edit windows: from a key to the character on the screen in a field of 100,000 characters, and
// pasting a large text.
#include "offScreen.h"
#include "platform/window/edit.h"
#include "platform/window/testhooks.h"

#include <benchmark/benchmark.h>

using namespace platform;

namespace {

constexpr std::uint32_t kWrapped = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL;
constexpr std::uint32_t kUnwrapped = kWrapped | ES_AUTOHSCROLL | WS_HSCROLL;

Text linesOf(std::size_t length, std::size_t line) {
    const TextView sample = u"Съешь же ещё этих мягких булок, the quick brown fox. ";
    Text text;
    while (text.size() < length) {
        for (std::size_t i = 0; i < line && text.size() < length; ++i) {
            text += sample[text.size() % sample.size()];
        }
        if (text.size() < length) text += u"\r\n";
    }
    return text;
}

class Field {
public:
    explicit Field(std::uint32_t style) {
        WindowOptions options;
        options.kind = WindowKind::Main;
        options.size = {600, 400};
        m_main = createWindow(options);
        edit =
            CreateWindowExW(0, u"EDIT", {}, WS_CHILD | WS_VISIBLE | style, 0, 0, 600, 400, m_main);
        ShowWindow(m_main, SW_SHOW);
        SetFocus(edit);
        test::settle();
    }
    ~Field() {
        DestroyWindow(m_main);
        test::settle();
    }
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;
    HWND edit = 0;

private:
    HWND m_main = 0;
};

// range 0: units in a line; range 1: at the start, in the middle or at the end of the text.
void keyToShown(benchmark::State& state) {
    startOffScreen();
    const Field field(state.range(0) > 1000 ? kWrapped : kUnwrapped);
    const Text text = linesOf(100'000, static_cast<std::size_t>(state.range(0)));
    SetWindowTextW(field.edit, text);
    const auto at = static_cast<WPARAM>(text.size()) * state.range(1) / 2;
    SendMessageW(field.edit, EM_SETSEL, at, at);
    SendMessageW(field.edit, EM_SCROLLCARET, 0, 0);
    test::settle();
    for (auto _ : state) {
        test::pressKey(field.edit, 'A', u"a");
        UpdateWindow(field.edit);
        pumpMessages();
    }
}
BENCHMARK(keyToShown)
    ->Args({80, 0})
    ->Args({80, 1})
    ->Args({80, 2})
    ->Args({100'000, 2})
    ->Unit(benchmark::kMillisecond);

// range 0: units in a line.
void paste(benchmark::State& state) {
    startOffScreen();
    test::setClipboardText(linesOf(5 << 20, static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        state.PauseTiming();
        const Field field(state.range(1) != 0 ? kWrapped : kUnwrapped);
        state.ResumeTiming();
        SendMessageW(field.edit, WM_PASTE, 0, 0);
        UpdateWindow(field.edit);
        pumpMessages();
    }
}
BENCHMARK(paste)
    ->ArgsProduct({{20, 80, 1000, 100'000, 6'000'000}, {0, 1}})
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond);

}  // namespace
