#include "gallery/samples.h"

#include "gallery/Sheet.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

#include <algorithm>
#include <cmath>

namespace gallery {
namespace {

using platform::rgb;

struct Light {
    double red, green, blue;
};
Light mix(const Light& a, const Light& b, double part) {
    return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part,
            a.blue + (b.blue - a.blue) * part};
}
std::uint8_t byteOf(double level) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(level), 0L, 255L));
}

// x and y from 0 to 1, y downwards.
Light landscapeAt(double x, double y) {
    Light light = mix({38, 84, 164}, {255, 206, 150}, std::clamp(y / 0.62, 0.0, 1.0));
    const double fromSun = std::hypot((x - 0.72) * 1.4, y - 0.3);
    light = mix({255, 246, 206}, light, std::clamp((fromSun - 0.07) / 0.25, 0.0, 1.0));
    const struct {
        double base, swell, waves, shift;
        Light near, far;
    } kHills[] = {
        {0.50, 0.10, 5.0, 0.3, {104, 110, 158}, {150, 140, 176}},
        {0.62, 0.07, 8.0, 1.9, {58, 110, 86}, {96, 140, 110}},
        {0.78, 0.05, 6.0, 4.2, {52, 120, 40}, {126, 172, 62}},
    };
    for (const auto& hill : kHills) {
        const double top = hill.base + hill.swell * std::sin(x * hill.waves + hill.shift);
        if (y >= top) light = mix(hill.far, hill.near, std::min((y - top) / 0.2, 1.0));
    }
    return light;
}

// The flower alone, on a ground that the context has already.
void drawFlower(HDC hDC) {
    DrawRectXY(hDC, 22, 24, 26, 46, rgb(44, 132, 58), true);
    DrawRoundRect(hDC, 25, 33, 39, 40,
                  {.bFill = true,
                   .iFillColor = rgb(88, 176, 84),
                   .iPenColor = rgb(36, 104, 48),
                   .iRadius = 14});
    const POINT kPetals[] = {{15, 1}, {27, 7}, {27, 20}, {15, 26}, {3, 20}, {3, 7}};
    for (const POINT& petal : kPetals) {
        DrawRoundRect(hDC, petal.x, petal.y, petal.x + 18, petal.y + 16,
                      {.bFill = true,
                       .iFillColor = rgb(236, 92, 112),
                       .iPenColor = rgb(150, 28, 60),
                       .iRadius = 20});
    }
    DrawRoundRect(hDC, 15, 12, 33, 30,
                  {.bFill = true,
                   .iFillColor = rgb(255, 214, 64),
                   .iPenColor = rgb(176, 128, 16),
                   .iRadius = 22});
}

constexpr int kFlowerSize = 48;

clsMEMDC flowerSurface(Color ground) {
    clsMEMDC surface;
    surface.CreateDC(kFlowerSize, kFlowerSize);
    surface.DrawBackColor(ground);
    drawFlower(surface.Hdc());
    return surface;
}

// A monochrome bitmap in a context of its own, all 0.
class MaskSurface {
public:
    MaskSurface(int width, int height)
        : m_hDC(platform::CreateCompatibleDC(0)),
          m_hBmp(platform::CreateCompatibleBitmap(m_hDC, width, height)),
          m_hOldBmp(platform::SelectObject(m_hDC, m_hBmp)) {}
    ~MaskSurface() {
        platform::SelectObject(m_hDC, m_hOldBmp);
        platform::DeleteDC(m_hDC);
        platform::DeleteObject(m_hBmp);
    }
    MaskSurface(const MaskSurface&) = delete;
    MaskSurface& operator=(const MaskSurface&) = delete;
    [[nodiscard]] HDC hdc() const { return m_hDC; }
    [[nodiscard]] HBITMAP bitmap() const { return m_hBmp; }

private:
    HDC m_hDC;
    HBITMAP m_hBmp;
    platform::HGDIOBJ m_hOldBmp;
};

std::shared_ptr<platform::PictureObject> iconPicture(HBITMAP mask, HBITMAP color) {
    platform::ICONINFO info;
    info.hbmMask = mask;
    info.hbmColor = color;
    return platform::OleCreatePictureIndirect(
        {platform::PICTYPE_ICON, platform::CreateIconIndirect(info)}, true);
}

}  // namespace

clsDIBSection landscape(int width, int height) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    clsDIBSection section;
    section.CreateDC(width, height, 24);
    for (int y = 0; y < height; ++y) {
        std::uint8_t* pixel = section.BitsPtr() + static_cast<std::ptrdiff_t>(height - 1 - y) *
                                                      section.BytesPerScanLine();
        for (int x = 0; x < width; ++x, pixel += 3) {
            const Light light = landscapeAt((x + 0.5) / width, (y + 0.5) / height);
            pixel[0] = byteOf(light.blue);
            pixel[1] = byteOf(light.green);
            pixel[2] = byteOf(light.red);
        }
    }
    return section;
}

std::shared_ptr<platform::PictureObject> flower() { return flowerSurface(kKeyColor).Picture(); }

std::shared_ptr<platform::PictureObject> flowerIcon() {
    const clsMEMDC color = flowerSurface(kKeyColor);
    const MaskSurface mask(kFlowerSize, kFlowerSize);
    // Where the source has the background colour the mask becomes 1.
    platform::SetBkColor(color.Hdc(), kKeyColor);
    color.PaintPicture(mask.hdc());
    return iconPicture(mask.bitmap(), color.hBmp());
}

std::shared_ptr<platform::PictureObject> monochromeIcon() {
    const int size = 32;
    const MaskSurface mask(size, 2 * size);
    // The upper half says what shows the background, the lower half is the image.
    DrawRectXY(mask.hdc(), 0, 0, size, size, rgb(255, 255, 255), true);
    DrawRoundRect(mask.hdc(), 2, 2, size - 2, size - 2, {.bFill = true, .iRadius = 10});
    DrawRoundRect(mask.hdc(), 7, size + 7, size - 7, 2 * size - 7,
                  {.bFill = true,
                   .iFillColor = rgb(255, 255, 255),
                   .iPenColor = rgb(255, 255, 255),
                   .iRadius = 6});
    return iconPicture(mask.bitmap(), 0);
}

void drawCheckers(HDC hDC, const RECT& rect) {
    const int size = 8;
    DrawRect(hDC, rect, rgb(255, 255, 255), true);
    for (int y = rect.top, row = 0; y < rect.bottom; y += size, ++row) {
        for (int x = rect.left + row % 2 * size; x < rect.right; x += 2 * size) {
            DrawRect(hDC, {x, y, std::min(x + size, rect.right), std::min(y + size, rect.bottom)},
                     rgb(226, 230, 235), true);
        }
    }
}

}  // namespace gallery
