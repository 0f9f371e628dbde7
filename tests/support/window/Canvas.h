// tests/support/window/Canvas.h: a small surface whose pixels are written and compared as text.
#pragma once
#include "platform/window/surface.h"

#include <span>
#include <string>
#include <string_view>

namespace test {

// A memory context with a bitmap of its own, white at first. In pictures each pixel is a letter and
// each row ends with LF:
//   . white   # black   r g b red, green, blue   y yellow   x middle grey   ? any other colour
class Canvas {
public:
    static constexpr int kMonochrome = -1;

    // bits: of a section of 1, 4, 8, 24 or 32 bits, which knows all colours above (1 bit: black and
    // white) unless it gets a table of its own; 0 for a compatible bitmap; kMonochrome.
    Canvas(int width, int height, int bits = 0, std::span<const platform::RGBQUAD> table = {});
    // As large as the picture, and showing it.
    explicit Canvas(std::string_view picture, int bits = 0);
    // As large as the picture, and white.
    [[nodiscard]] static Canvas asLargeAs(std::string_view picture, int bits = 0);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    [[nodiscard]] platform::HDC hdc() const { return m_hDC; }
    [[nodiscard]] platform::HBITMAP bitmap() const { return m_bitmap; }
    [[nodiscard]] platform::SIZE size() const { return {m_width, m_height}; }
    // The rows of a section, bottom row first; nullptr without one.
    [[nodiscard]] std::uint8_t* bits() const { return m_bits; }
    [[nodiscard]] std::string picture() const;

private:
    void show(std::string_view picture);
    platform::HDC m_hDC = 0;
    platform::HBITMAP m_bitmap = 0;
    platform::HGDIOBJ m_oldBitmap = 0;
    std::uint8_t* m_bits = nullptr;
    int m_width, m_height;
};

// A brush, pen or font for the length of a scope, selected into a context where one is given.
class Selected {
public:
    Selected(platform::HDC hDC, platform::HGDIOBJ object)
        : m_hDC(hDC), m_object(object), m_old(platform::SelectObject(hDC, object)) {}
    ~Selected() {
        platform::SelectObject(m_hDC, m_old);
        platform::DeleteObject(m_object);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;
    operator platform::HGDIOBJ() const { return m_object; }

private:
    platform::HDC m_hDC;
    platform::HGDIOBJ m_object, m_old;
};

}  // namespace test
