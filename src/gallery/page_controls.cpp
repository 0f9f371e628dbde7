// The drawn controls and the text box in use: a form inside of the page.
#include "controls/ctlProgressXP.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "controls/ctlUniTextBoxXP.h"
#include "controls/ctlUniTooltipManager.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "host/Form.h"

#include <algorithm>
#include <utility>

namespace gallery {
namespace {

using platform::rgb;

// ---- What stands on the page, for the picture and for the windows. Places are those in the area
// of the page, those of check boxes in their frame.

template <class Props> struct Item {
    TextView name;
    RECT place;
    Props props;
    bool enabled = true;
};

constexpr int kRight = 440, kColumn = 412, kRowHeight = 34, kFirstRow = kHeadingHeight + 8;
constexpr int kBoxes = 6, kLastBox = kBoxes - 1;

RECT boxPlace(int i) { return box(120, kFirstRow + i * kRowHeight, 290, i == kLastBox ? 130 : 24); }

std::vector<Item<TextBoxProps>> textBoxes() {
    TextBoxProps line, password, locked, fromRight, limited, lines;
    line.Tip = u"Any script: by keys, by the clipboard, by an input method";
    line.RoundedBorders = true;
    password.PasswordChar = u"*";
    password.Text = u"secret";
    locked.Text = u"Cannot be changed";
    locked.Locked = true;
    locked.BackColor = kTint;
    locked.Tip = u"The arrows move in it, the mouse selects";
    fromRight.RightToLeft = true;
    fromRight.Text = u"\u05E9\u05DC\u05D5\u05DD, abc";
    limited.MaxLength = 10;
    limited.Tip = u"Takes ten units, also from the clipboard";
    lines.Text = u"\u041F\u0440\u0438\u0432\u0435\u0442, \u043C\u0438\u0440";
    lines.MultiLine = true;
    lines.ScrollBars = 2;
    lines.Tip =
        u"Ctrl with Enter begins a line: Enter alone is the OK button's, as in every window "
        u"with a default button";
    return {{u"One line", boxPlace(0), line},     {u"Password", boxPlace(1), password},
            {u"Locked", boxPlace(2), locked},     {u"Right to left", boxPlace(3), fromRight},
            {u"Ten units", boxPlace(4), limited}, {u"Several lines", boxPlace(5), lines}};
}

Item<FrameProps> frame() {
    return {
        u"Choices", box(kRight, 0, kColumn, 90), {.Caption = u"Choices", .BackColorOut = kPaper}};
}

enum Check : std::size_t { kPressable, kPersistent, kAtRight, kDisabled };

std::vector<Item<CheckProps>> checks() {
    return {
        {u"Buttons can be pressed",
         box(12, 30, 190, 20),
         {.Caption = u"&Buttons can be pressed", .Pressed = true, .Tip = u"Also by Alt and B"}},
        {u"Tips stay",
         box(12, 56, 190, 20),
         {.Caption = u"&Tips stay", .Tip = u"As long as the mouse rests, not for three seconds"}},
        {u"Box at the right", box(216, 30, 180, 20), {.Caption = u"Box at the &right", .Align = 1}},
        {u"Not to be ticked",
         box(216, 56, 180, 20),
         {.Caption = u"Not to be ticked", .Align = 1, .Pressed = true},
         false},
    };
}

enum Button : std::size_t { kOk, kCancel, kStep, kRound };

std::vector<Item<ButtonProps>> buttons() {
    const auto place = [](int i) { return box(kRight + i * 104, 108, 96, 28); };
    ButtonProps ok{.Caption = u"OK", .Tip = u"The default button: Enter presses it from anywhere"};
    ButtonProps cancel{.Caption = u"Cancel", .Tip = u"The cancel button: Escape presses it"};
    ButtonProps step{.Caption = u"&Step", .Tip = u"Ten per cent more"};
    ButtonProps round{.Caption = u"Round",
                      .BackColor = rgb(127, 138, 167),
                      .ForeColor = 0xFFFFFF,
                      .Style = 4,
                      .UseRoundRegions = true};
    for (ButtonProps* props : {&ok, &cancel, &step}) props->BackColorOut = kPaper;
    return {{u"OK", place(kOk), ok},
            {u"Cancel", place(kCancel), cancel},
            {u"Step", place(kStep), step},
            {u"Round", place(kRound), round}};
}

std::vector<Item<ProgressProps>> progressBars() {
    return {{u"Blocks",
             box(kRight, 156, kColumn, 18),
             {.Percent = 30, .Tip = u"The Step button moves it", .BackColorOut = kPaper}},
            {u"Solid",
             box(kRight, 182, kColumn, 18),
             {.Percent = 30, .Spaces = false, .BackColorOut = kPaper}}};
}

const RECT kStatus = box(kRight, 222, kColumn, 24), kBand = box(kRight, 264, kColumn, 70);

Item<LabelProps> status() {
    return {u"Status",
            kStatus,
            {.Caption = u"What you do is told here",
             .BackColor = kTint,
             .VAlignment = 1,
             .BorderStyle = 1}};
}

Item<LabelProps> transparent() {
    return {u"Transparent",
            inset(kBand, 8),
            {.Caption = u"A transparent label, and a tip on its letters only",
             .BackColor = rgb(60, 112, 166),
             .ForeColor = 0xFFFFFF,
             .Alignment = 2,
             .VAlignment = 1,
             .BackStyle = 0,
             .Tip = u"This text is so long that it is wrapped: a tip is never wider than three "
                    u"hundred pixels, and goes as soon as the mouse moves on"}};
}

// What is behind the controls, from the top left of the area.
void drawGround(HDC hDC, const RECT& area) {
    RECT left = box(area.left, area.top, 410, kHeadingHeight);
    heading(hDC, left, u"Text boxes");
    int i = 0;
    for (const auto& item : textBoxes()) {
        const RECT place = boxPlace(i++);
        write(hDC, box(area.left, area.top + place.top, 112, 24), item.name, kCaption);
    }
    const RECT band = box(area.left + kBand.left, area.top + kBand.top, kColumn, heightOf(kBand));
    GradientVRect(hDC, band, rgb(86, 156, 214), rgb(36, 72, 120));
}

// ---- In use

template <class Control, class Props>
std::unique_ptr<Control> made(HWND parent, const Item<Props>& item) {
    PropertyBag bag;
    Control::properties().write(bag, item.props, {});
    bag.WriteProperty(u"Enabled", item.enabled, true);
    auto control = std::make_unique<Control>();
    HostWindow& host = *control;
    host.Name(Text(item.name));
    host.ReadProperties(bag);
    (void)host.create(parent, item.place);
    platform::SetWindowTextW(host.hWnd(), Text(item.name));
    return control;
}

class Desk : public Form {
public:
    explicit Desk(PageHost host) : Form(platform::WindowKind::Child), m_host(std::move(host)) {
        BackColor(kPaper);
        (void)Load(m_host.hWnd);
    }

    [[nodiscard]] std::vector<HWND> tabStops() const {
        std::vector<HWND> stops;
        for (const HostWindow* control : Controls()) {
            if (control->CanGetFocus()) stops.push_back(control->hWnd());
        }
        return stops;
    }

protected:
    void onLoad() override {
        m_tips.InitProperties();
        for (const auto& item : textBoxes()) addTextBox(item);
        m_frame = made<ctlUniFrameXP>(hWnd(), frame());
        for (const auto& item : checks()) addCheck(item);
        for (const auto& item : buttons()) addButton(item);
        m_buttons[kOk]->Default(true);
        m_buttons[kCancel]->Cancel(true);
        for (const auto& item : progressBars()) {
            m_bars.push_back(made<ctlProgressXP>(hWnd(), item));
            m_bars.back()->AccessibleName(Text(item.name));
        }
        m_status = made<ctlUniLabelNoFlick>(hWnd(), status());
        m_transparent = made<ctlUniLabel>(hWnd(), transparent());
        platform::ShowWindow(hWnd(), platform::SW_SHOW);
    }
    void onPaint() override {
        DrawRectXY(hDC(), 0, 0, ScaleWidth(), ScaleHeight(), kPaper, true);
        drawGround(hDC(), {0, 0, ScaleWidth(), ScaleHeight()});
    }

private:
    void say(const Text& what) {
        if (m_status != nullptr) m_status->Caption(what);
        if (m_host.log) m_host.log(toUtf8(what));
    }
    void addTextBox(const Item<TextBoxProps>& item) {
        m_boxes.push_back(made<ctlUniTextBoxXP>(hWnd(), item));
        ctlUniTextBoxXP& made = *m_boxes.back();
        made.AccessibleName(Text(item.name));
        made.Change = [this, &made] {
            Text shown = made.Text();
            for (std::size_t at = 0; (at = shown.find(u"\r\n", at)) != Text::npos;) {
                shown.replace(at, 2, u" | ");
            }
            say(made.Name() + u": " + shown);
        };
    }
    void addCheck(const Item<CheckProps>& item) {
        const std::size_t which = m_checks.size();
        m_checks.push_back(made<ctlUniCheckXP>(m_frame->hWnd(), item));
        ctlUniCheckXP& made = *m_checks.back();
        made.Click = [this, &made, which] {
            say(made.Name() + (made.Pressed() ? u": ticked" : u": not ticked"));
            if (which == kPersistent) m_tips.PersistentTip(made.Pressed());
            if (which != kPressable) return;
            for (const auto& button : m_buttons) button->Enabled(made.Pressed());
        };
    }
    void addButton(const Item<ButtonProps>& item) {
        const std::size_t which = m_buttons.size();
        m_buttons.push_back(made<ctlUniButtonXP>(hWnd(), item));
        ctlUniButtonXP& made = *m_buttons.back();
        made.Click = [this, &made, which] {
            say(made.Name() + u": pressed");
            if (which != kStep) return;
            for (const auto& bar : m_bars) {
                bar->Value(static_cast<std::int16_t>((bar->Value() + 10) % 110));
            }
        };
    }

    PageHost m_host;
    ctlUniTooltipManager m_tips;
    std::vector<std::unique_ptr<ctlUniTextBoxXP>> m_boxes;
    std::unique_ptr<ctlUniFrameXP> m_frame;
    std::vector<std::unique_ptr<ctlUniCheckXP>> m_checks;
    std::vector<std::unique_ptr<ctlUniButtonXP>> m_buttons;
    std::vector<std::unique_ptr<ctlProgressXP>> m_bars;
    std::unique_ptr<ctlUniLabelNoFlick> m_status;
    std::unique_ptr<ctlUniLabel> m_transparent;
};

class ControlsPage : public LivePage {
public:
    explicit ControlsPage(PageHost host) : m_desk(std::move(host)) {}
    void place(const RECT& area) override {
        m_desk.move(area.left, area.top, std::max(widthOf(area), 0), std::max(heightOf(area), 0));
    }
    [[nodiscard]] std::vector<HWND> tabStops() const override { return m_desk.tabStops(); }

private:
    Desk m_desk;
};

}  // namespace

void drawControls(HDC hDC, const RECT& area) {
    const auto placed = [&](const RECT& place, POINT in = {}) {
        return box(area.left + in.x + place.left, area.top + in.y + place.top, widthOf(place),
                   heightOf(place));
    };
    drawGround(hDC, area);
    for (const auto& item : textBoxes()) {
        putControl(hDC, placed(item.place), [&](HDC to, SIZE size) {
            paintTextBox(to, size, item.props, {.bEnabled = item.enabled});
        });
    }
    const Item<FrameProps> around = frame();
    putControl(hDC, placed(around.place),
               [&](HDC to, SIZE size) { paintFrame(to, size, around.props); });
    for (const auto& item : checks()) {
        putControl(hDC, placed(item.place, {around.place.left, around.place.top}),
                   [&](HDC to, SIZE size) {
                       paintCheck(to, size, item.props, {.bEnabled = item.enabled});
                   });
    }
    std::size_t i = 0;
    for (const auto& item : buttons()) {
        const ButtonState state{.bDefault = i == kOk, .bCancel = i == kCancel};
        ButtonProps props = item.props;
        if (props.UseRoundRegions) props.BackColorOut = kPaper;  // what the window leaves out
        putControl(hDC, placed(item.place),
                   [&](HDC to, SIZE size) { paintButton(to, size, props, state); });
        ++i;
    }
    for (const auto& item : progressBars()) {
        putControl(hDC, placed(item.place), [&](HDC to, SIZE size) {
            ProgressSurfaces surfaces;
            surfaces.build(size, item.props);
            surfaces.paint(to, item.props);
        });
    }
    const Item<LabelProps> told = status(), through = transparent();
    putControl(hDC, placed(told.place),
               [&](HDC to, SIZE size) { paintLabel(to, size, told.props, true); });
    // The letters alone; the ground is drawn already.
    write(hDC, placed(through.place), through.props.Caption, {.color = through.props.ForeColor},
          kOneLine | platform::DT_CENTER);
}

std::unique_ptr<LivePage> openControls(const PageHost& host) {
    return std::make_unique<ControlsPage>(host);
}

}  // namespace gallery
