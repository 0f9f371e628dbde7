// gallery/pages.h: the pages of the gallery. Each is a file page_x.cpp beside this one; to add one
// is to write that file, name its function here and give it a row in pages.cpp.
#pragma once
#include "gfx/types.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace gallery {

// What a page can ask of the window that it is shown in.
struct PageHost {
    HWND hWnd = 0;  // holds the page's own windows; the page is drawn on it
    // Tells a line to whoever started the program with --log.
    std::function<void(const std::string& line)> log;
};

// The part of a page that can be used: its child windows, from construction to destruction.
class LivePage {
public:
    LivePage() = default;
    virtual ~LivePage() = default;
    LivePage(const LivePage&) = delete;
    LivePage& operator=(const LivePage&) = delete;

    virtual void place(const RECT& area) = 0;  // at the start, and when the window's size changes
    // What the Tab key goes to, in that order.
    [[nodiscard]] virtual std::vector<HWND> tabStops() const { return {}; }
};

struct Page {
    TextView title;  // names the picture's file, too
    TextView note;   // one line below the title
    // Draws the content on paper that is ready, inside of the area; in one that is too small
    // something is left out. Draws the same each time.
    void (*draw)(HDC hDC, const RECT& area);
    // For a page with windows of its own.
    std::unique_ptr<LivePage> (*open)(const PageHost& host) = nullptr;
};

[[nodiscard]] std::span<const Page> pages();

// The size of a page's picture, in pixels; the content of every page has room in it.
constexpr SIZE kPageSize{900, 650};

// The part of a page of that size that its content has.
[[nodiscard]] RECT contentArea(SIZE size);
// Draws the whole page from (0, 0): paper, title, note, content.
void drawPage(HDC hDC, SIZE size, const Page& page);

// ---- One function for each page, in the page's file

void drawFacesOnLight(HDC hDC, const RECT& area);
void drawFacesOnDark(HDC hDC, const RECT& area);
void drawFacesOnColour(HDC hDC, const RECT& area);
void drawFaceVariations(HDC hDC, const RECT& area);
void drawShapes(HDC hDC, const RECT& area);
void drawColours(HDC hDC, const RECT& area);
void drawScripts(HDC hDC, const RECT& area);
void drawTextFlags(HDC hDC, const RECT& area);
void drawFonts(HDC hDC, const RECT& area);
void drawPictures(HDC hDC, const RECT& area);
void drawCopies(HDC hDC, const RECT& area);
void drawPalettes(HDC hDC, const RECT& area);
void drawDesktop(HDC hDC, const RECT& area);
void drawMenu(HDC hDC, const RECT& area);
std::unique_ptr<LivePage> openMenu(const PageHost& host);
void drawInput(HDC hDC, const RECT& area);
std::unique_ptr<LivePage> openInput(const PageHost& host);
void drawDialogs(HDC hDC, const RECT& area);
std::unique_ptr<LivePage> openDialogs(const PageHost& host);
void drawButtons(HDC hDC, const RECT& area);
void drawChecks(HDC hDC, const RECT& area);
void drawLabels(HDC hDC, const RECT& area);
void drawFrames(HDC hDC, const RECT& area);
void drawProgress(HDC hDC, const RECT& area);
void drawTextBoxes(HDC hDC, const RECT& area);
void drawControls(HDC hDC, const RECT& area);
std::unique_ptr<LivePage> openControls(const PageHost& host);
void drawGrid(HDC hDC, const RECT& area);
std::unique_ptr<LivePage> openGrid(const PageHost& host);

}  // namespace gallery
