// The owners of graphics objects: clsMEMDC, clsDIBSection, clsGdiHandle.
#include "gfx/clsDIBSection.h"
#include "gfx/clsGdiHandle.h"
#include "gfx/clsMEMDC.h"
#include "platform/window/handles.h"
#include "platform/window/recorder.h"
#include "support/raised.h"
#include "support/window/Canvas.h"

#include <gtest/gtest.h>

namespace {

using platform::rgb;
using test::Canvas;
using test::raised;

constexpr Color kRed = rgb(255, 0, 0), kWhite = rgb(255, 255, 255);

// A surface as text, with the letters of Canvas.
template <class Surface> std::string pictureOf(const Surface& surface) {
    const Canvas canvas(surface.Width(), surface.Height());
    surface.PaintPicture(canvas.hdc());
    return canvas.picture();
}

// A bitmap in no context, with red in its top left pixel on white.
platform::HBITMAP looseBitmap(int width, int height) {
    clsMEMDC surface;
    surface.CreateDC(width, height);
    surface.DrawBackColor(kWhite);
    platform::SetPixel(surface.Hdc(), 0, 0, kRed);
    return surface.ReleasehBmp();
}

TEST(clsMEMDC, StartsBlackAndTransparent) {
    clsMEMDC surface;
    surface.CreateDC();
    EXPECT_EQ(pictureOf(surface), "#\n");
    EXPECT_EQ(surface.BkMode(), platform::TRANSPARENT);
    surface.CreateDC(3, -7, platform::OPAQUE);  // the first one goes
    EXPECT_EQ(pictureOf(surface), "###\n");
    EXPECT_EQ(platform::GetDeviceCaps(surface.Hdc(), platform::BITSPIXEL), 32);
    EXPECT_EQ(platform::liveHandles(), "device context 1, bitmap 1");
    surface.CreateDC(0, 5);
    EXPECT_EQ(surface.Width(), 0);
    EXPECT_NE(surface.Hdc(), 0U);
    surface.Destroy();
    EXPECT_EQ(surface.Width() + surface.Height(), 0);
    EXPECT_EQ(platform::liveHandles(), "");
}

// Both kinds.
template <class Surface> class AnySurface : public testing::Test {};
using SurfaceKinds = testing::Types<clsMEMDC, clsDIBSection>;
TYPED_TEST_SUITE(AnySurface, SurfaceKinds);

TYPED_TEST(AnySurface, DoesNothingWhileItIsEmpty) {
    const Canvas canvas(2, 2);
    const platform::DrawingRecorder recorder;
    TypeParam surface;
    surface.PaintPicture(canvas.hdc());
    surface.DrawBackColor(0);
    surface.BkMode(platform::OPAQUE);
    surface.BkColor(5);
    EXPECT_EQ(surface.BkMode() + surface.BkColor(), 0);
    EXPECT_EQ(surface.Picture(), nullptr);
    surface.Destroy();
    EXPECT_EQ(recorder.text(), "");
}

TYPED_TEST(AnySurface, HasAModeAndAColourAndGivesItsBitmapAsAPicture) {
    TypeParam surface;
    surface.CreateDC(5, 4);
    for (const int mode : {platform::OPAQUE, platform::TRANSPARENT}) {
        surface.BkMode(mode);
        EXPECT_EQ(surface.BkMode(), mode);
    }
    surface.BkColor(sysColor(2));
    EXPECT_EQ(surface.BkColor(), platform::GetSysColor(2));

    const auto picture = surface.Picture();
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->Type(), platform::PICTYPE_BITMAP);
    EXPECT_EQ(picture->Width(), 5);
    EXPECT_EQ(picture->Height(), 4);
    EXPECT_EQ(surface.Picture(), nullptr);
    EXPECT_EQ(platform::liveHandles(), "bitmap 1");
}

TEST(clsMEMDC, PaintsItsOwnSizeUnlessToldOtherwise) {
    clsMEMDC surface;
    surface.CreateDC(4, 3);
    const Canvas canvas(9, 9);
    const platform::DrawingRecorder recorder;
    surface.PaintPicture(canvas.hdc());
    surface.PaintPicture(canvas.hdc(), 1, 2, -1, 2, 3, 0, -1, 2, platform::SRCAND);
    surface.PaintPicture(canvas.hdc(), 0, 0, 8, -1, 0, 1);
    surface.PaintPicture(canvas.hdc(), 0, 0, 0, 0, 0, 0, 0, 0);  // no size is no default
    EXPECT_EQ(recorder.text(), "BitBlt 0,0 4x3 from 0,0 rop 0xCC0020\n"
                               "BitBlt 1,2 4x2 from 3,0 rop 0x8800C6\n"
                               "StretchBlt 0,0 8x3 from 0,1 4x3 rop 0xCC0020\n"
                               "BitBlt 0,0 0x0 from 0,0 rop 0xCC0020\n");
}

TEST(clsMEMDC, ClonesAreasAndBitmaps) {
    const Canvas source("rgb\nyx#\n");
    platform::SetBkMode(source.hdc(), platform::OPAQUE);
    const struct {
        int left, top, width, height;
        std::string picture;
    } kCases[] = {
        {0, 0, -1, -1, "rgb\nyx#\n"},
        {1, 0, 10, -1, "gb#\nx##\n"},  // both sizes of the bitmap, from column 1 on
        {1, 1, 2, 1, "x#\n"},
        {2, 0, 2, 3, "b#\n##\n##\n"},
    };
    for (const auto& c : kCases) {
        clsMEMDC surface;
        surface.CloneFromHdc(source.hdc(), c.left, c.top, c.width, c.height);
        EXPECT_EQ(pictureOf(surface), c.picture);
        EXPECT_EQ(surface.BkMode(), platform::OPAQUE);
    }

    clsMEMDC own;
    own.CloneFromHdc(source.hdc());
    own.CloneFromHdc(own.Hdc(), 1, 0, 2, 1);  // a part of itself
    EXPECT_EQ(pictureOf(own), "gb\n");
    EXPECT_EQ(own.BkMode(), platform::OPAQUE);
    own.Destroy();

    const clsGdiHandle bitmap(looseBitmap(2, 2));
    clsMEMDC surface;
    surface.CloneFromHBmp(bitmap.Handle());
    EXPECT_EQ(pictureOf(surface), "r.\n..\n");
    EXPECT_EQ(surface.BkMode(), platform::TRANSPARENT);
    EXPECT_EQ(platform::liveHandles(), "device context 2, bitmap 3");  // the canvas counts
}

TEST(clsMEMDC, ResizesByCuttingOrStretching) {
    const auto original = [] {
        clsMEMDC surface;
        const Canvas canvas("rg\nby\n");
        surface.CloneFromHdc(canvas.hdc());
        surface.BkMode(platform::OPAQUE);
        return surface;
    };
    const struct {
        int width, height;
        std::string cut, adapted;
    } kCases[] = {
        {3, 3, "rg#\nby#\n###\n", "rgg\nbyy\nbyy\n"},
        {1, 2, "r\nb\n", "g\ny\n"},
        {4, 0, "rg##\nby##\n", "rrgg\nbbyy\n"},
        {-1, 1, "rg\n", "by\n"},
    };
    for (const auto& c : kCases) {
        clsMEMDC surface = original();
        surface.ResizeCutDC(c.width, c.height);
        EXPECT_EQ(pictureOf(surface), c.cut);
        EXPECT_EQ(surface.BkMode(), platform::OPAQUE);
        surface = original();
        surface.ResizeAdaptDC(c.width, c.height);
        EXPECT_EQ(pictureOf(surface), c.adapted);
        EXPECT_EQ(surface.BkMode(), platform::OPAQUE);
    }
    clsMEMDC empty;
    empty.ResizeCutDC(2, 1, platform::OPAQUE);
    EXPECT_EQ(pictureOf(empty), "##\n");
    EXPECT_EQ(empty.BkMode(), platform::OPAQUE);
    clsMEMDC other;
    other.ResizeAdaptDC(-1, 2);
    EXPECT_EQ(pictureOf(other), "#\n#\n");
}

TEST(clsMEMDC, GivesItsBitmapAway) {
    clsMEMDC surface;
    EXPECT_EQ(surface.ReleasehBmp(), 0U);
    surface.CreateDC(2, 2);
    const clsGdiHandle bitmap(surface.ReleasehBmp());
    EXPECT_NE(bitmap.Handle(), 0U);
    EXPECT_EQ(surface.Hdc(), 0U);
    EXPECT_EQ(surface.ReleasehBmp(), 0U);
    EXPECT_EQ(platform::liveHandles(), "bitmap 1");
}

TEST(Surfaces, TellTheStepThatFailed) {
    clsMEMDC memory;
    clsDIBSection section;
    const clsGdiHandle bitmap(looseBitmap(2, 2));
    const auto failed = [](const std::string& operation, const std::string& message) {
        return "clsMemDC." + operation + ": clsMemDC." + operation + '.' + message;
    };
    const std::string noContext = failed("CreateDC", "HDC not created"),
                      noBitmap = failed("CreateDC", "hBmp not created"),
                      noSection = failed("CreateDC", "hDib not created"),
                      notSelected = failed("CloneFromhBmp", "Bitmap not selected"),
                      noPalette = "clsDIBSection: Palette is required!";
    std::vector<HDC> all;  // of the places in the table of contexts
    while (const HDC hDC = platform::CreateCompatibleDC(0)) all.push_back(hDC);
    EXPECT_EQ(raised([&] { memory.CreateDC(2, 2); }), noContext);
    EXPECT_EQ(raised([&] { section.CloneFromHBmp(bitmap.Handle()); }), noContext);
    for (const HDC hDC : all) platform::DeleteDC(hDC);
    const Canvas busy(2, 2);  // its bitmap is selected
    clsDIBSection::PaletteSlot slot;
    const struct {
        const char* name;
        std::function<void()> call;
        std::string failure;
    } kCases[] = {
        {"too large", [&] { memory.CreateDC(40'000, 2); }, noBitmap},
        {"too many bytes", [&] { memory.CreateDC(30'000, 30'000); }, noBitmap},
        {"too large to resize", [&] { memory.ResizeCutDC(2, 0x7FFFFFFF); }, noBitmap},
        {"no bitmap", [&] { memory.CloneFromHBmp(0); }, notSelected},
        {"section of no size", [&] { section.CreateDC(0, 2); }, noSection},
        {"section too large", [&] { section.CreateDC(0x7FFFFFFF, 0x7FFFFFFF, 32); }, noSection},
        {"no depth", [&] { section.CreateDC(2, 2, 16); }, noSection},
        {"no depth either", [&] { section.CreateDC(2, 2, 65'537); }, noSection},
        {"of an empty one", [&] { section.CloneFromDib(clsDIBSection()); }, noSection},
        {"of no context", [&] { section.CloneFromHdc(0, 24); }, noSection},
        {"no palette", [&] { section.CloneFromHBmp(bitmap.Handle(), 23); }, noPalette},
        {"an empty palette slot", [&] { section.CloneFromHdc(0, 1, &slot); }, noPalette},
        {"in a context", [&] { section.CloneFromHBmp(busy.bitmap(), 32); }, notSelected},
    };
    for (const auto& c : kCases) EXPECT_EQ(raised(c.call), c.failure) << c.name;

    EXPECT_NE(section.Hdc(), 0U);  // what was made until then is there
    section.Destroy();
    memory.Destroy();
    EXPECT_EQ(platform::liveHandles(), "device context 1, bitmap 2");  // the canvas, and ours
}

TEST(clsDIBSection, HasTheSizesOfItsDepth) {
    clsDIBSection section;
    EXPECT_EQ(section.Width() + section.Height() + section.Bpp(), 0);
    section.CreateDC();
    EXPECT_EQ(pictureOf(section), "##\n##\n");
    EXPECT_EQ(section.Bpp(), 24);
    const struct {
        int width, bits, bytes;
    } kCases[] = {{3, 24, 12}, {3, 1, 4}, {33, 1, 8}, {3, 4, 4},
                  {9, 4, 8},   {4, 8, 4}, {5, 8, 8},  {3, 32, 12}};
    for (const auto& c : kCases) {
        section.CreateDC(c.width, 2, c.bits);
        EXPECT_EQ(section.BytesPerScanLine(), c.bytes) << c.width << " at " << c.bits;
        EXPECT_EQ(section.Palette().has_value(), c.bits <= 8);
    }
    EXPECT_EQ(raised([&] { section.CreateDC(3, 2, 16); }).substr(0, 8), "clsMemDC");
    EXPECT_EQ(section.Bpp(), 16);
    EXPECT_EQ(section.Width() + section.BytesPerScanLine(), 0);
}

TEST(clsDIBSection, ShowsItsPixelsFromTheBottomUp) {
    clsDIBSection section;
    section.CreateDC(2, 2, 24);
    section.BitsPtr()[0] = 255;                               // bottom left: blue
    section.BitsPtr()[section.BytesPerScanLine() + 5] = 255;  // top right: red
    EXPECT_EQ(pictureOf(section), "#r\nb#\n");
    section.DrawBackColor(sysColor(5));
    EXPECT_EQ(pictureOf(section), "..\n..\n");
}

TEST(clsDIBSection, DrawsAsTheOtherSurfaceDoes) {
    clsDIBSection section;
    section.CreateDC(-9, 1, 32);                    // 2 x 1
    EXPECT_EQ(section.BkMode(), platform::OPAQUE);  // as contexts begin

    // Made smaller, lines are dropped, not joined.
    const Canvas source("r#.\n");
    platform::StretchBlt(section.Hdc(), 0, 0, 2, 1, source.hdc(), 0, 0, 3, 1, platform::SRCCOPY);
    EXPECT_EQ(pictureOf(section), "r.\n");
    const Canvas target(4, 2);
    section.PaintPicture(target.hdc(), 1, 0, -1, 2, 0, 0, -1, 1, platform::SRCAND);
    EXPECT_EQ(target.picture(), ".r..\n.r..\n");
    section.PaintPicture(section.Hdc(), 1, 0, 1, 1, 0, 0, 1, 1);  // onto itself
    EXPECT_EQ(pictureOf(section), "rr\n");

    const clsDIBSection other = std::move(section);
    EXPECT_EQ(pictureOf(other), "rr\n");
    clsDIBSection coarse;
    coarse.CloneFromDib(other, 8);  // gets the colours that 8 bits have without a palette
    EXPECT_EQ(pictureOf(coarse), "rr\n");
    EXPECT_EQ(coarse.Palette()->Red(5), 255);
}

TEST(clsDIBSection, GivesBackThePaletteItMade) {
    const struct { int bits, count, entries; } kCases[] = {{1, 2, 2}, {4, 16, 16}, {8, 125, 256}};
    for (const auto& c : kCases) {
        clsDIBSection section;
        clsDIBSection::PaletteSlot slot;
        section.CreateDC(2, 2, c.bits, &slot);
        ASSERT_TRUE(slot.has_value());
        EXPECT_EQ(slot->Count(), c.count);
        const auto table = section.Palette();
        ASSERT_TRUE(table.has_value());
        EXPECT_EQ(table->Count(), c.entries);
        for (std::int32_t i = 1; i <= c.count; ++i) {
            EXPECT_EQ(rgb(table->Red(i), table->Green(i), table->Blue(i)),
                      rgb(slot->Red(i), slot->Green(i), slot->Blue(i)));
        }
    }
    // A palette longer than the table is cut, a shorter one leaves black behind it.
    clsDIBSection::PaletteSlot slot(std::in_place);
    for (int i = 1; i <= 20; ++i) slot->Add(255, static_cast<std::uint8_t>(i), 0);
    clsDIBSection section;
    section.CreateDC(2, 2, 4, &slot);
    EXPECT_EQ(slot->Count(), 20);
    EXPECT_EQ(section.Palette()->Green(16), 16);
    slot->Destroy();
    section.CreateDC(2, 2, 1, &slot);
    EXPECT_EQ(section.Palette()->Red(2), 0);
}

TEST(clsDIBSection, ClonesAtItsOwnOrAnotherDepth) {
    const auto shown = [](const clsDIBSection& section) {
        return std::to_string(section.Bpp()) + " bits:\n" + pictureOf(section);
    };
    const Canvas source("rg\nb.\n"), monochrome("#.\n", Canvas::kMonochrome);
    clsDIBSection deep, indexed, copied;
    deep.CloneFromHdc(source.hdc());
    EXPECT_EQ(shown(deep), "24 bits:\nrg\nb.\n");
    deep.CloneFromHdc(deep.Hdc(), -1, nullptr, 0, 1, 2, 1);  // a part of itself
    EXPECT_EQ(shown(deep), "24 bits:\nb.\n");
    EXPECT_EQ(raised([&] { deep.CloneFromHdc(deep.Hdc(), 8); }),
              "clsDIBSection: Palette is required!");
    EXPECT_EQ(shown(deep), "24 bits:\nb.\n");
    deep.CloneFromHdc(source.hdc(), -1, nullptr, 1, 0, 1, 2);
    EXPECT_EQ(shown(deep), "32 bits:\ng\n.\n");

    clsDIBSection::PaletteSlot slot(std::in_place);
    slot->Add(255, 255, 255);
    slot->Add(255, 0, 0);
    indexed.CloneFromHdc(source.hdc(), 4, &slot);
    EXPECT_EQ(shown(indexed), "4 bits:\nr#\n#.\n");  // the rest of the table is black
    copied.CloneFromDib(indexed);
    EXPECT_EQ(shown(copied), "4 bits:\nr#\n#.\n");
    EXPECT_EQ(copied.Palette()->Red(2), 255);
    copied.CloneFromDib(copied, 32);
    EXPECT_EQ(shown(copied), "32 bits:\nr#\n#.\n");

    const clsGdiHandle bitmap(looseBitmap(2, 1));
    copied.CloneFromHBmp(bitmap.Handle(), -1);
    EXPECT_EQ(shown(copied), "32 bits:\nr.\n");
    copied.CloneFromHdc(monochrome.hdc(), -1);
    EXPECT_EQ(shown(copied), "1 bits:\n#.\n");
}

TEST(clsDIBSection, GivesItsSectionAway) {
    clsDIBSection section;
    section.CreateDC(3, 2, 32);
    const clsGdiHandle bitmap(section.ReleasehDib());
    EXPECT_EQ(section.BitsPtr(), nullptr);
    EXPECT_EQ(section.Width(), 0);
    EXPECT_EQ(section.ReleasehDib(), 0U);
    EXPECT_EQ(platform::liveHandles(), "bitmap 1");
}

TEST(clsGdiHandle, OwnsOneObject) {
    const auto brush = [] { return platform::CreateSolidBrush(kRed); };
    clsGdiHandle handle(brush());
    handle.Handle(brush());
    EXPECT_EQ(platform::liveHandles(), "brush 1");
    const clsGdiHandle other(handle.ReleaseHandle());
    EXPECT_EQ(handle.Handle(), 0U);
    EXPECT_EQ(handle.ReleaseHandle(), 0U);
    handle.Handle(brush());
    EXPECT_EQ(platform::liveHandles(), "brush 2");
    handle.Destroy();
    handle.Destroy();
    EXPECT_EQ(platform::liveHandles(), "brush 1");
}

}  // namespace
