#include "support/window/Canvas.h"

#include <algorithm>
#include <iterator>

namespace test {
namespace {

using namespace platform;

struct Letter {
    char letter;
    COLORREF color;
};
constexpr Letter kLetters[] = {
    {'#', 0},        {'.', 0xFFFFFF}, {'r', 0x0000FF}, {'g', 0x00FF00},
    {'b', 0xFF0000}, {'y', 0x00FFFF}, {'x', 0x808080},
};

int widthOf(std::string_view picture) { return static_cast<int>(picture.find('\n')); }
int heightOf(std::string_view picture) {
    return static_cast<int>(std::count(picture.begin(), picture.end(), '\n'));
}

}  // namespace

Canvas::Canvas(int width, int height, int bits, std::span<const RGBQUAD> table)
    : m_width(width), m_height(height) {
    m_hDC = CreateCompatibleDC(0);
    if (bits == kMonochrome) {
        m_bitmap = CreateCompatibleBitmap(m_hDC, width, height);
    } else if (bits == 0) {
        const HDC screen = GetDC(0);
        m_bitmap = CreateCompatibleBitmap(screen, width, height);
        ReleaseDC(0, screen);
    } else {
        RGBQUAD letters[std::size(kLetters)];
        for (std::size_t i = 0; i < std::size(kLetters); ++i) {
            const COLORREF c = kLetters[i].color;
            letters[i].rgbRed = static_cast<std::uint8_t>(redOf(c));
            letters[i].rgbGreen = static_cast<std::uint8_t>(greenOf(c));
            letters[i].rgbBlue = static_cast<std::uint8_t>(blueOf(c));
        }
        BITMAPINFO info;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biBitCount = static_cast<std::uint16_t>(bits);
        info.bmiColors = table.empty() ? std::span<const RGBQUAD>(letters) : table;
        void* pixels = nullptr;
        m_bitmap = CreateDIBSection(m_hDC, info, DIB_RGB_COLORS, pixels);
        m_bits = static_cast<std::uint8_t*>(pixels);
    }
    m_oldBitmap = SelectObject(m_hDC, m_bitmap);
    BitBlt(m_hDC, 0, 0, width, height, 0, 0, 0, PATCOPY);
}

Canvas::Canvas(std::string_view picture, int bits)
    : Canvas(widthOf(picture), heightOf(picture), bits) {
    show(picture);
}

Canvas Canvas::asLargeAs(std::string_view picture, int bits) {
    return {widthOf(picture), heightOf(picture), bits};
}

Canvas::~Canvas() {
    SelectObject(m_hDC, m_oldBitmap);
    DeleteDC(m_hDC);
    DeleteObject(m_bitmap);
}

std::string Canvas::picture() const {
    std::string all;
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            const COLORREF color = GetPixel(m_hDC, x, y);
            const auto* known = std::find_if(std::begin(kLetters), std::end(kLetters),
                                             [&](const Letter& l) { return l.color == color; });
            all += known != std::end(kLetters) ? known->letter : '?';
        }
        all += '\n';
    }
    return all;
}

void Canvas::show(std::string_view picture) {
    int x = 0, y = 0;
    for (const char c : picture) {
        if (c == '\n') {
            x = 0;
            ++y;
            continue;
        }
        const auto* known = std::find_if(std::begin(kLetters), std::end(kLetters),
                                         [&](const Letter& l) { return l.letter == c; });
        SetPixel(m_hDC, x++, y, known != std::end(kLetters) ? known->color : 0x123456);
    }
}

}  // namespace test
