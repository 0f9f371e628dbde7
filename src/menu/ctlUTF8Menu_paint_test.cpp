// Measuring and drawing: sizes and calls as text, and pictures to look at.
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "menu/captions.h"
#include "menu/ctlUTF8Menu.h"
#include "menu/menuTree_test.h"
#include "platform/window/recorder.h"
#include "platform/window/screen.h"
#include "platform/window/testhooks.h"
#include "platform/window/window.h"
#include "support/PlatformVersion.h"
#include "support/gui/Golden.h"
#include "support/window/Canvas.h"
#include "support/window/LoggedWindow.h"

#include <gtest/gtest.h>

using namespace platform;
using ::test::menuTree;

namespace {

constexpr std::uint32_t kPlain = 0;

// A picture of one colour with a white frame; its top left pixel is what a transparent one lacks.
Picture square(int side, COLORREF color) {
    const HDC screen = GetDC(0);
    const HBITMAP hBitmap = CreateCompatibleBitmap(screen, side, side);
    const HDC hDC = CreateCompatibleDC(screen);
    const HGDIOBJ hOld = SelectObject(hDC, hBitmap);
    DrawRectXY(hDC, 0, 0, side, side, 0xFFFFFF, true);
    DrawRectXY(hDC, 2, 2, side - 2, side - 2, color, true);
    SelectObject(hDC, hOld);
    DeleteDC(hDC);
    ReleaseDC(0, screen);
    return OleCreatePictureIndirect({PICTYPE_BITMAP, hBitmap}, true);
}

class MenuPainting : public testing::Test {
public:
    MenuPainting() {
        WindowOptions options;
        options.kind = WindowKind::Main;
        options.size = {100, 50};
        m_hWnd = createWindow(options);
        SetMenu(m_hWnd,
                menuTree({
                    {1, u"&Bar"},
                    {2, u"Picture|1"},
                    {3,
                     u"x",
                     {{30, u"&Item\tF3"}, {31, u"Icon|1\tCtrl+S"}, {32, u"-"}, {33, u"[SEP]Text"}}},
                }));
        NONCLIENTMETRICSA metrics;
        SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        m_hFont = CreateFontIndirectA(metrics.lfMenuFont);
        menu.ImageArray(std::make_shared<MenuPictures>(MenuPictures{square(10, rgb(0, 0, 255))}));
    }
    ~MenuPainting() override {
        menu.Detach();
        DestroyWindow(m_hWnd);
        DeleteObject(m_hFont);
        platform::test::settle();
    }
    enum Item : std::uint32_t { Bar, BarPicture, Opens, Popup, PopupIcon, Line, TextLine };

    [[nodiscard]] MEASUREITEMSTRUCT measure(Item item) const {
        MEASUREITEMSTRUCT request;
        request.itemWidth = 9;
        request.itemData = item;
        EXPECT_EQ(SendMessageW(m_hWnd, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&request)), 1);
        return request;
    }
    void draw(HDC hDC, Item item, const RECT& rect, std::uint32_t state) const {
        const HGDIOBJ hOld = SelectObject(hDC, m_hFont);
        DRAWITEMSTRUCT request;
        request.itemData = item;
        request.itemState = state;
        request.hDC = hDC;
        request.rcItem = rect;
        EXPECT_EQ(SendMessageW(m_hWnd, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&request)), 1);
        SelectObject(hDC, hOld);
    }
    // The calls of a drawing, at 10,20 in 100 x 22 pixels: names, places, colours, texts. The rows
    // of a button face and the steps of a gradient are one line.
    [[nodiscard]] std::string calls(Item item, std::uint32_t state = kPlain) const {
        const ::test::Canvas canvas(130, 60);
        const DrawingRecorder recorder(canvas.hdc());
        draw(canvas.hdc(), item, {10, 20, 110, 42}, state);
        return shortened(recorder.lines());
    }
    [[nodiscard]] std::string firstCall(Item item, std::uint32_t state) const {
        const std::string all = calls(item, state);
        return all.substr(0, all.find('\n') + 1);
    }
    [[nodiscard]] std::string size(Item item) const {
        const MEASUREITEMSTRUCT request = measure(item);
        return std::to_string(request.itemWidth) + 'x' + std::to_string(request.itemHeight);
    }
    void attach() { menu.Attach(m_hWnd); }

    platform::test::WindowHookScope hooks;
    ctlUTF8Menu menu{true};

    [[nodiscard]] HWND window() const { return m_hWnd; }
    void programLook() {
        menu.SelectorBackColor(0xA78A7F);
        menu.SelectorForeColor(0xFFFFFF);
        menu.LeftBand(true);
        menu.RoundSelector(true);
    }

private:
    static std::string shortened(const std::vector<std::string>& lines) {
        std::string all;
        std::size_t i = 0;
        for (; i < lines.size(); ++i) {
            if (lines[i].starts_with("FillRect") && i + 1 < lines.size() &&
                lines[i + 1].starts_with("FillRect")) {
                const std::size_t first = i;
                while (i < lines.size() && lines[i].starts_with("FillRect")) ++i;
                if (i < lines.size() && i - first > 2 && lines[i].starts_with("FrameRect ")) {
                    all += "face " + lines[i].substr(10, lines[i].rfind(' ') - 10) + '\n';
                    continue;
                }
                i = first;
            }
            all += lines[i] + '\n';
        }
        return all;
    }

    HWND m_hWnd = 0;
    HFONT m_hFont = 0;
};

// ---- Sizes

TEST_F(MenuPainting, SizesComeFromTextIconAndSettings) {
    attach();
    // On the bar, without a picture, an item is as wide as its text.
    const auto textWidth = [&](const Text& text) {
        menu.OnOwnerDraw = [&](MenuItemLook& look, bool) { look.sCaption = text; };
        const auto width = static_cast<int>(measure(Bar).itemWidth);
        menu.OnOwnerDraw = nullptr;
        return width;
    };
    const auto sized = [](int width, int height) {
        return std::to_string(width) + 'x' + std::to_string(height);
    };
    const int bar = textWidth(u"&Bar"), picture = textWidth(u"Picture"), line = textWidth(u"Text");
    const int item = textWidth(u"&Item    F3"), decoded = textWidth(u"A    F3");  // with the key
    menu.IconDim(0);
    const auto lineHeight = static_cast<int>(measure(Bar).itemHeight) - 4;
    menu.IconDim(16);
    EXPECT_EQ(size(Bar), sized(bar, 20));
    EXPECT_EQ(size(BarPicture), sized(picture + 22, 20));
    EXPECT_EQ(size(Popup), sized(item + 22, 20));
    EXPECT_EQ(size(Line), "9x5") << "the width stays as it came";
    EXPECT_EQ(size(TextLine), sized(line + 4, lineHeight + 2));
    menu.LeftBand(true);
    EXPECT_EQ(size(TextLine), sized(line + 22, lineHeight + 2));
    menu.FullSelector(false);
    EXPECT_EQ(size(Popup), sized(item + 22, 18));
    menu.IconDim(40);
    EXPECT_EQ(size(Popup), sized(item + 46, 42));
    menu.IconDim(-30000);  // nonsense is held at nothing
    EXPECT_EQ(size(Popup), sized(0, lineHeight + 2));

    // A larger cell from the handler counts, a smaller one does not.
    menu.IconDim(16);
    menu.OnOwnerDraw = [](MenuItemLook& look, bool) {
        look.iconW = 30;
        look.iconH = 2;
    };
    EXPECT_EQ(size(BarPicture), sized(picture + 36, 18));
    EXPECT_EQ(size(Bar), sized(bar, 18)) << "no picture, no cell";
    EXPECT_EQ(size(Popup), sized(item + 36, 18));
    EXPECT_EQ(size(TextLine), sized(line + 22, lineHeight + 2));
    menu.OnOwnerDraw = [](MenuItemLook& look, bool) { look.sCaption = u"0XQQA=7C|9"; };
    EXPECT_EQ(size(Popup), sized(decoded + 22, 18)) << "decoded, but for the key";
}

// ---- Calls. What the pictures below show pixel by pixel is not told again here.

TEST_F(MenuPainting, ItemsAreDrawnInOrderAtTheirPlaces) {
    attach();
    const std::string face = "face 10,20,110,42\n", back = "FillRect 10,20,110,42 #D4D0C8\n";
    EXPECT_EQ(calls(Bar, ODS_HOTLIGHT),
              face + "DrawTextW 10,20,110,42 #FFFFFF flags 0x25 \"&Bar\"\n");
    EXPECT_EQ(calls(Bar, ODS_SELECTED | ODS_DISABLED),
              back + "DrawTextW 10,20,110,42 #808080 flags 0x25 \"&Bar\"\n");
    EXPECT_EQ(calls(BarPicture, ODS_SELECTED),
              face + "BitBlt 15,26 10x10 from 0,0 rop 0xCC0020\n"
                     "DrawTextW 32,20,106,42 #FFFFFF flags 0x24 \"Picture\"\n");
    EXPECT_EQ(calls(Popup, ODS_CHECKED), back +
                                             "BitBlt 16,28 7x7 from 0,0 rop 0xCC0020\n"
                                             "DrawTextW 32,20,106,42 #000000 flags 0x24 \"&Item\"\n"
                                             "DrawTextW 32,20,106,42 #000000 flags 0x26 \"F3\"\n");
    EXPECT_EQ(calls(Popup, ODS_DISABLED | ODS_SELECTED),
              back + "DrawTextW 33,21,107,43 #FFFFFF flags 0x24 \"&Item\"\n"
                     "DrawTextW 33,21,107,43 #FFFFFF flags 0x26 \"F3\"\n"
                     "DrawTextW 32,20,106,42 #808080 flags 0x24 \"&Item\"\n"
                     "DrawTextW 32,20,106,42 #808080 flags 0x26 \"F3\"\n");
    menu.ExtSepBackColor(0x0000FF);
    menu.ExtSepForeColor(0x00FF00);
    menu.OnOwnerDraw = [this](MenuItemLook& look, bool) {
        look.oPic = menu.ImageArray()->front();  // is of no account
        look.iconW = look.iconH = 90;
    };
    const std::string separator = calls(TextLine, ODS_SELECTED);
    EXPECT_TRUE(separator.starts_with("FillRect 10,20,110,42 #FF0000\nLineTo 12,32 ")) << separator;
    EXPECT_NE(separator.find("DrawTextW 10,20,110,42 #00FF00 flags 0x25 \"Text\""),
              std::string::npos);
}

TEST_F(MenuPainting, UnderTheSelectorThereIsNeitherBandNorBackground) {
    attach();
    const std::string full = "face 10,20,110,42\n", narrow = "face 30,20,110,42\n";
    menu.LeftBand(true);
    EXPECT_EQ(firstCall(Popup, ODS_SELECTED), full);
    menu.FullSelector(false);
    EXPECT_EQ(firstCall(Popup, ODS_SELECTED), narrow);
    menu.LeftBand(false);
    EXPECT_EQ(firstCall(Popup, ODS_SELECTED), full);
    EXPECT_EQ(firstCall(PopupIcon, ODS_SELECTED), narrow);
    EXPECT_EQ(firstCall(Popup, ODS_SELECTED | ODS_CHECKED), narrow);
    menu.OnOwnerDraw = [](MenuItemLook& look, bool) { look.iconW = 26; };
    EXPECT_EQ(firstCall(PopupIcon, ODS_SELECTED), "face 40,20,110,42\n");
}

TEST_F(MenuPainting, TheHandlerIsAskedOnceForEachItemWithItsCaptionAndPicture) {
    std::string asked;
    menu.OnOwnerDraw = [&](MenuItemLook& look, bool bSelected) {
        asked += '<' + toUtf8(look.sCaption) + "> " + std::to_string(look.iconW) + 'x' +
                 std::to_string(look.iconH) + (look.oPic ? " picture" : "") +
                 (look.bTransparent ? " transparent" : "") + (bSelected ? " selected" : "") + '\n';
    };
    attach();
    for (const Item item : {Bar, BarPicture, PopupIcon, Line, TextLine}) (void)measure(item);
    EXPECT_EQ(asked, "<&Bar> 16x16 transparent\n<Picture|1> 16x16 picture transparent\n"
                     "<Icon|1> 16x16 picture transparent\n<[SEP]Text> 0x0 transparent\n");
    const struct {
        std::uint32_t state;
        std::string told;
    } kCases[] = {{0, ""},
                  {ODS_SELECTED, " selected"},
                  {ODS_SELECTED | ODS_DISABLED, ""},
                  {ODS_HOTLIGHT, ""}};
    for (const auto& c : kCases) {
        asked.clear();
        (void)calls(Popup, c.state);
        EXPECT_EQ(asked, "<&Item> 16x16 transparent" + c.told + '\n');
    }
    asked.clear();
    (void)calls(TextLine, ODS_SELECTED);
    EXPECT_EQ(asked, "<[SEP]Text> 0x0 transparent\n") << "no selector is ever on it";
}

TEST_F(MenuPainting, OnWindows95TheSelectorOfTheBarIsNarrower) {
    const ::test::PlatformVersion version({4, 0, VER_PLATFORM_WIN32_WINDOWS});
    attach();
    EXPECT_EQ(firstCall(Bar, ODS_SELECTED), "face 10,20,109,42\n");
    menu.Detach();  // as it was attached
}

// ---- Pictures

constexpr std::uint32_t kStates[] = {0,
                                     ODS_SELECTED,
                                     ODS_DISABLED,
                                     ODS_CHECKED,
                                     ODS_CHECKED | ODS_SELECTED,
                                     ODS_CHECKED | ODS_DISABLED};

// Each kind of item in a column, each state in a row, on a magenta ground that must not show but
// where an item leaves it.
TEST_F(MenuPainting, LooksAsItShould) {
    const std::pair<const char*, std::function<void()>> kLooks[] = {
        {"defaults", [] {}},
        {"gradients",
         [&] {
             menu.FadeBackground(true);
             menu.FadeLeftBand(true);
             menu.FadeExtSep(true);
             menu.LeftBand(true);
             menu.LeftBandSeparators(true);
             menu.FullSelector(false);
             menu.LeftBandBackColor(rgb(120, 150, 200));
             menu.ExtSepBackColor(rgb(120, 150, 200));
             menu.SelectorStyle(1);
         }},
        {"flat",
         [&] {
             menu.Separators3D(false);
             menu.CustomFontFace(u"Noto Sans CJK SC");
             menu.SelectorStyle(6);
             menu.OnOwnerDraw = [](MenuItemLook& look, bool) {
                 look.sCaption = encodedText(u"\u6253\u5F00\u2026");
                 look.iconW = 24;
                 look.bTransparent = false;
             };
         }},
        {"program", [&] { programLook(); }},
    };
    PropertyBag stored;  // the defaults, with the pictures
    menu.WriteProperties(stored);
    for (const auto& [name, prepare] : kLooks) {
        menu.ReadProperties(stored);
        menu.OnOwnerDraw = nullptr;
        prepare();
        attach();
        EXPECT_GOLDEN(std::string("menu/") + name, SIZE{620, 160}, [&](HDC hDC) {
            DrawRectXY(hDC, 0, 0, 620, 160, rgb(255, 0, 255), true);
            int x = 5;
            for (const Item item : {Bar, BarPicture, Popup, PopupIcon, Line, TextLine}) {
                for (int row = 0; row < 6; ++row) {
                    const int y = 5 + row * 25, height = item == Line ? 5 : 20;
                    draw(hDC, item, {x, y, x + 95, y + height}, kStates[row]);
                }
                x += 100;
            }
        });
    }
}

// The program's own menu, shown for real.
TEST_F(MenuPainting, TheWholeMenuOfTheProgramIsShown) {
    programLook();
    DestroyMenu(GetMenu(window()));
    const HMENU bar = menuTree({
        {1,
         u"&File",
         {{10, u"Open the main translation file|1"},
          {11, u"-"},
          {12, u"Open the file to translate|1"},
          {13, u"Create a new translation from an empty file|2"},
          {14, u"Create a new translation from a copy of the main  file"},
          {15, u"-"},
          {16, u"Save Translation\tCtrl+S", {}, MFS_DISABLED},
          {17, u"[SEP]Recent"},
          {18, u"Show only untranslated strings", {}, MFS_CHECKED},
          {19, u"More", {{20, u"x"}}},
          {21, u"Exit|3"}}},
        {2, u"&Tools|2"},
        {3, u"&Help"},
    });
    menu.ImageArray(std::make_shared<MenuPictures>(
        MenuPictures{square(14, rgb(0, 0, 255)), square(16, rgb(0, 128, 0)), square(14, 0xFF)}));
    SetMenu(window(), bar);
    SetWindowPos(window(), 0, 0, 0, 300, 60, SWP_NOMOVE | SWP_NOZORDER);
    attach();
    ShowWindow(window(), SW_SHOW);
    platform::test::settle();
    using platform::test::MouseAction;
    platform::test::mouseOnMenu(bar, 0, MouseAction::Press, MK_LBUTTON, MK_LBUTTON);
    platform::test::mouseOnMenu(bar, 0, MouseAction::Release, MK_LBUTTON);
    platform::test::settle();
    const HMENU file = GetSubMenu(bar, 0);
    platform::test::mouseOnMenu(file, 2, MouseAction::Move);
    EXPECT_GOLDEN("menu/whole-bar", SIZE{300, 20},
                  [&](HDC hDC) { (void)platform::test::paintMenu(bar, hDC); });
    EXPECT_GOLDEN("menu/whole-popup", SIZE{380, 200},
                  [&](HDC hDC) { (void)platform::test::paintMenu(file, hDC); });
    platform::test::pressMenuKey(VK_ESCAPE);
    platform::test::pressMenuKey(VK_ESCAPE);
}

}  // namespace
