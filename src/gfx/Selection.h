// gfx/Selection.h: an object in a context for the length of a scope.
#pragma once
#include "platform/window/surface.h"

namespace gfx {

// Neither the context nor the object is owned; an object that is deleted in the same scope has to
// stand above this.
class Selection {
public:
    Selection(platform::HDC hDC, platform::HGDIOBJ hObject)
        : m_hDC(hDC), m_hOld(platform::SelectObject(hDC, hObject)) {}
    ~Selection() { platform::SelectObject(m_hDC, m_hOld); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

    // False when the object or the context is none: what is drawn would be drawn with another.
    [[nodiscard]] bool done() const { return m_hOld != 0; }

private:
    platform::HDC m_hDC;
    platform::HGDIOBJ m_hOld;
};

}  // namespace gfx
