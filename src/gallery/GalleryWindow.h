// gallery/GalleryWindow.h: the window of the gallery: the list of pages at the left, the page
// beside it.
//
// Page Up and Page Down move to other pages from anywhere; the list also knows the arrows, Home and
// End. Tab goes round the list and what the page has, unless that has an order of its own; Escape
// and Ctrl with Tab go back to the list. What has the focus may use up a key ahead of all this.
#pragma once
#include "gallery/Window.h"
#include "gallery/pages.h"

namespace gallery {

// Hears what happens, a line each: "page TITLE" when one is shown, "at X,Y NAME" for each row of
// the list and each part of the page that takes clicks, by its middle in client pixels of the
// window, and what the page has to say.
using Log = std::function<void(const std::string& line)>;

class GalleryWindow : public Window {
public:
    explicit GalleryWindow(Log log);
    ~GalleryWindow() override;

    void show(std::size_t page);  // from 0; beyond the last one nothing happens
    [[nodiscard]] std::size_t page() const { return m_current; }

protected:
    platform::LRESULT message(std::uint32_t uMsg, platform::WPARAM wParam,
                              platform::LPARAM lParam) override;
    void paint(HDC, SIZE) override {}  // its two parts cover it

private:
    class PageList;
    class PageView;
    void arrange();
    void arrangeLive();
    void tellPlace(HWND of, const RECT& rect, TextView name);
    bool key(std::int32_t code);
    void moveBy(int pageCount);

    Log m_log;
    std::size_t m_current = 0;
    std::unique_ptr<PageList> m_list;
    std::unique_ptr<PageView> m_view;
    std::unique_ptr<LivePage> m_live;
};

}  // namespace gallery
