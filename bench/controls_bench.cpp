// Paints of the drawn controls, and one step of a progress bar.
#include "controls/ctlProgressXP.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "host/Form.h"
#include "offScreen.h"
#include "platform/window/testhooks.h"

#include <benchmark/benchmark.h>

namespace {

// A memory context with the font of controls.
struct Target {
    explicit Target(SIZE size) {
        startOffScreen();
        surface.CreateDC(size.cx, size.cy);
        font.SetFontToDCStdFont(surface.Hdc(), StdFont());
    }
    clsMEMDC surface;
    clsFontHDC font;
};

void Button(benchmark::State& state) {
    constexpr SIZE kSize{97, 25};
    const Target target(kSize);
    ButtonProps props;
    props.Caption = u"&Cancel";
    props.Style = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) paintButton(target.surface.Hdc(), kSize, props, {.bDefault = true});
}
BENCHMARK(Button)->Arg(0)->Arg(4)->Arg(8);

void CheckBox(benchmark::State& state) {
    constexpr SIZE kSize{187, 33};
    const Target target(kSize);
    CheckProps props;
    props.Caption = u"Save empty translations when saving the destination file";
    props.Pressed = true;
    for (auto _ : state) paintCheck(target.surface.Hdc(), kSize, props, {.bFocus = true});
}
BENCHMARK(CheckBox);

void Label(benchmark::State& state) {
    constexpr SIZE kSize{187, 33};
    const Target target(kSize);
    LabelProps props;
    props.Caption = u"Save empty translations when saving the destination file";
    props.VAlignment = 1;
    for (auto _ : state) paintLabel(target.surface.Hdc(), kSize, props, true);
}
BENCHMARK(Label);

void Frame(benchmark::State& state) {
    constexpr SIZE kSize{361, 133};
    const Target target(kSize);
    FrameProps props;
    props.Caption = u"Files";
    for (auto _ : state) paintFrame(target.surface.Hdc(), kSize, props);
}
BENCHMARK(Frame);

// All of a step: the property, the paint, and the way to the screen.
void ProgressStep(benchmark::State& state) {
    startOffScreen();
    Form form(platform::WindowKind::Main);
    form.ClientSize(900, 100);
    form.Show();
    ctlProgressXP progress;
    progress.Spaces(state.range(0) != 0);
    progress.create(form.hWnd(), {0, 0, 900, 15});
    platform::test::settle();
    std::int16_t percent = 0;
    for (auto _ : state) {
        percent = static_cast<std::int16_t>(percent % 100 + 1);
        progress.Percent(percent);
    }
}
BENCHMARK(ProgressStep)->Arg(1)->Arg(0);

// A transparent label whose text changes: its shape follows at once.
void TransparentLabel(benchmark::State& state) {
    startOffScreen();
    Form form(platform::WindowKind::Main);
    form.ClientSize(400, 100);
    form.Show();
    ctlUniLabelNoFlick label;
    label.create(form.hWnd(), {0, 0, 187, 33});
    label.BackStyle(0);
    platform::test::settle();
    bool other = false;
    for (auto _ : state) {
        other = !other;
        label.Caption(other ? u"Row 1 of 1000" : u"Row 2 of 1000");
    }
}
BENCHMARK(TransparentLabel);

}  // namespace
