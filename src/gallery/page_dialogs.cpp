// The desktop's dialogs. Each button opens one; the line below tells the last answer.
#include "gallery/Sheet.h"
#include "gallery/Window.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "platform/base/paths.h"
#include "win/modCommDialogs.h"

#include <utility>

namespace gallery {
namespace {

using namespace platform;

constexpr std::uint32_t kQuestion = MB_YESNOCANCEL | MB_ICONQUESTION;

constexpr TextView kCancelled = u"cancelled";

Text askMessage(HWND owner) {
    switch (MessageBoxW(owner, u"Do you want to save the translations?", u"Quillmere gallery",
                        kQuestion)) {
    case IDYES:
        return u"Yes";
    case IDNO:
        return u"No";
    default:
        return Text(kCancelled);
    }
}

using namespace std::string_view_literals;
constexpr TextView kFilter = u"Language files (*.lng)\0*.lng\0All files (*)\0*\0\0"sv;

Text askFile(HWND owner) {
    std::int32_t flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    const Text path = ShowOpen(owner, kFilter, u"Open a file", flags, u"");
    return path.empty() ? Text(kCancelled) : pathForDisplay(path);
}

Text askNewFile(HWND owner) {
    std::int32_t flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST, filter = 1;
    const Text path =
        ShowSave(owner, kFilter, u"Name a file", flags, u"", u"new.lng", filter, u"lng");
    return path.empty() ? Text(kCancelled) : pathForDisplay(path) + u" (nothing was written)";
}

Text askFolder(HWND owner) {
    const Text path = ShowDir(owner, u"", u"Choose a folder");
    return path.empty() ? Text(kCancelled) : pathForDisplay(path);
}

Text askColor(HWND owner) {
    static COLORREF last = rgb(86, 156, 214);
    const COLORREF color = ShowColor(owner, last);
    if (color == -1) return Text(kCancelled);
    last = color;
    return hexColor(color);
}

Text askFont(HWND owner) {
    static ChosenFont font{.Name = u"Tahoma", .Size = 11};
    FontDialogOptions options;
    options.Owner = owner;
    if (!ShowFontEx(font, options)) return Text(kCancelled);
    Text answer = font.Name + u", " + number(static_cast<int>(font.Size)) + u" points";
    if (font.Bold()) answer += u", bold";
    if (font.Italic) answer += u", italic";
    return answer;
}

struct Dialog {
    TextView caption, note;
    Text (*ask)(HWND owner);
};
constexpr Dialog kDialogs[] = {
    {u"Message...", u"A question with three buttons", askMessage},
    {u"Open a file...", u"One that exists, with two filters", askFile},
    {u"Name a file...", u"A new one, or one to be replaced; nothing is written", askNewFile},
    {u"Folder...", u"A folder that exists", askFolder},
    {u"Colour...", u"Begins with the last one; keeps 16 of one's own", askColor},
    {u"Font...", u"Face, size and style", askFont},
};

RECT rowOf(const RECT& area, int i) {
    return box(area.left, area.top + 8 + i * 52, widthOf(area), 52);
}
RECT buttonOf(const RECT& area, int i) {
    const RECT row = rowOf(area, i);
    return box(row.left, row.top, 170, 34);
}
RECT answerOf(const RECT& area) {
    return box(area.left, area.top + 8 + static_cast<int>(std::size(kDialogs)) * 52 + 16,
               std::max(widthOf(area), 0), 64);
}

void drawAnswer(HDC hDC, const RECT& rect, TextView from, TextView answer) {
    DrawRect(hDC, rect, kTint, true);
    DrawFlatFace(hDC, rect, {.iBackColor = kTint, .bRounded = true, .iOuterColor = kPaper});
    const RECT text = {rect.left + 16, rect.top, rect.right - 16, rect.bottom};
    if (from.empty()) {
        write(hDC, text, u"No dialog has answered yet.", {.points = 10, .color = kFaint});
        return;
    }
    write(hDC, {text.left, text.top + 10, text.right, text.top + 28}, from, kCaption);
    write(hDC, {text.left, text.top + 28, text.right, text.top + 52}, answer, {.points = 11});
}

class AnswerLine : public Window {
public:
    explicit AnswerLine(HWND parent) : Window(childOf(parent)) {}
    void show(Text from, Text answer) {
        m_from = std::move(from);
        m_answer = std::move(answer);
        repaint();
    }

protected:
    void paint(HDC hDC, SIZE size) override {
        DrawRectXY(hDC, 0, 0, size.cx, size.cy, kPaper, true);
        drawAnswer(hDC, {0, 0, size.cx, size.cy}, m_from, m_answer);
    }

private:
    Text m_from, m_answer;
};

class DialogsPage : public LivePage {
public:
    explicit DialogsPage(PageHost host) : m_host(std::move(host)), m_answer(m_host.hWnd) {
        for (const Dialog& dialog : kDialogs) {
            m_buttons.push_back(std::make_unique<PushButton>(m_host.hWnd, Text(dialog.caption),
                                                             [this, &dialog] { run(dialog); }));
        }
    }

    void place(const RECT& area) override {
        for (std::size_t i = 0; i < m_buttons.size(); ++i) {
            m_buttons[i]->place(buttonOf(area, static_cast<int>(i)));
        }
        m_answer.place(answerOf(area));
    }
    [[nodiscard]] std::vector<HWND> tabStops() const override {
        std::vector<HWND> stops;
        for (const auto& button : m_buttons) stops.push_back(button->hWnd());
        return stops;
    }

private:
    void run(const Dialog& dialog) {
        const Text answer = dialog.ask(m_host.hWnd);
        m_answer.show(Text(dialog.caption), answer);
        m_host.log("answer \"" + toUtf8(dialog.caption) + "\": " + toUtf8(answer));
    }

    PageHost m_host;
    AnswerLine m_answer;
    std::vector<std::unique_ptr<PushButton>> m_buttons;
};

}  // namespace

void drawDialogs(HDC hDC, const RECT& area) {
    for (int i = 0; i < static_cast<int>(std::size(kDialogs)); ++i) {
        const RECT button = buttonOf(area, i);
        PushButton::draw(hDC, button, kDialogs[i].caption, {});
        write(hDC, {button.right + 20, button.top, area.right, button.bottom}, kDialogs[i].note,
              {.points = 9, .color = kFaint});
    }
    drawAnswer(hDC, answerOf(area), u"", u"");
}

std::unique_ptr<LivePage> openDialogs(const PageHost& host) {
    return std::make_unique<DialogsPage>(host);
}

}  // namespace gallery
