#include "gfx/modCtlCommon_alphaImg.h"

#include "gfx/clsGdiHandle.h"
#include "gfx/clsMEMDC.h"
#include "platform/window/handles.h"
#include "support/raised.h"
#include "support/window/Canvas.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using platform::PictureObject;
using platform::rgb;
using test::Canvas;
using PicturePtr = std::shared_ptr<PictureObject>;

// A bitmap that shows the text, in no context.
platform::HBITMAP bitmapOf(std::string_view picture, int bits) {
    const Canvas canvas(picture);
    clsDIBSection::PaletteSlot palette(std::in_place);
    palette->Create16();
    clsDIBSection section;
    section.CloneFromHdc(canvas.hdc(), bits, &palette);
    return section.ReleasehDib();
}

PicturePtr pictureOf(std::string_view picture, int bits = 32) {
    return platform::OleCreatePictureIndirect({platform::PICTYPE_BITMAP, bitmapOf(picture, bits)},
                                              true);
}

// mask: # where the picture shows, . where the background does. Without a colour image the lower
// half of the mask is the picture.
PicturePtr iconOf(std::string_view mask, std::string_view color, bool bIsIcon = true) {
    const Canvas canvas(mask, Canvas::kMonochrome);
    clsDIBSection section;
    section.CloneFromHdc(canvas.hdc(), -1);
    const clsGdiHandle hMask(section.ReleasehDib());
    const clsGdiHandle hColor(color.empty() ? 0 : bitmapOf(color, 24));
    const platform::ICONINFO info{bIsIcon, 1, 2, hMask.Handle(), hColor.Handle()};
    return platform::OleCreatePictureIndirect(
        {platform::PICTYPE_ICON, platform::CreateIconIndirect(info)}, true);
}

struct Placed {
    const char* name;
    SIZE canvas;
    RECT area;
    std::string picture;
    ImagePlacing placing;
    std::string result;
};

const Placed kPlaced[] = {
    {"as it is", {4, 3}, {0, 0, 4, 3}, "rg\nb#\n", {}, ".rg.\n.b#.\n....\n"},
    {"odd room: to the left and up",
     {5, 5},
     {0, 0, 5, 5},
     "rg\nb#\n",
     {},
     ".....\n.rg..\n.b#..\n.....\n.....\n"},
    {"odd room, one colour left out: lower by one",
     {5, 5},
     {0, 0, 5, 5},
     "rg\nb#\n",
     {.bPicTransparent = true, .lPicTranspColor = 0},
     ".....\n.....\n.rg..\n.b...\n.....\n"},
    {"cut at the right and at the bottom",
     {4, 4},
     {1, 1, 3, 3},
     "rgb\nyxr\nbbb\n",
     {},
     "....\n.rg.\n.yx.\n....\n"},
    {"cut and transparent",
     {4, 4},
     {1, 1, 3, 3},
     "rgb\nyxr\nbbb\n",
     {.bPicTransparent = true},
     "....\n..g.\n.yx.\n....\n"},
    {"cut to a size of its own",
     {4, 4},
     {0, 0, 4, 4},
     "rgb\nyxr\nbbb\n",
     {.iPicWidth = 2, .iPicHeight = 1},
     "....\n.rg.\n....\n....\n"},
    {"a size beyond the picture's",
     {4, 2},
     {0, 0, 4, 2},
     "rg\nb#\n",
     {.iPicWidth = 9, .iPicHeight = 9},
     ".rg.\n.b#.\n"},
    {"a size of 0",
     {2, 2},
     {0, 0, 2, 2},
     "rg\nb#\n",
     {.bPicGrayed = true, .iPicWidth = 0},
     "..\n..\n"},
    {"the colour of a pixel",
     {3, 2},
     {0, 0, 3, 2},
     "rgr\nrrb\n",
     {.bPicTransparent = true},
     ".g.\n..b\n"},
    {"the colour of another pixel",
     {3, 2},
     {0, 0, 3, 2},
     "rgr\nrrb\n",
     {.bPicTransparent = true, .lPicXTransp = 2, .lPicYTransp = 1},
     "rgr\nrr.\n"},
    {"the colour of a pixel outside",
     {3, 2},
     {0, 0, 3, 2},
     "rgr\nrrb\n",
     {.bPicTransparent = true, .lPicXTransp = 9},
     "rgr\nrrb\n"},
    {"a colour without transparency",
     {3, 2},
     {0, 0, 3, 2},
     "rgr\nrrb\n",
     {.lPicTranspColor = rgb(255, 0, 0)},
     "rgr\nrrb\n"},
    {"partly outside",
     {3, 2},
     {-2, -1, 2, 3},
     "rgb\nyxr\nbb#\nr##\n",
     {.bPicTransparent = true, .lPicTranspColor = 0},
     "r..\n...\n"},
    {"no room", {2, 1}, {1, 0, 1, 1}, "r\n", {}, "..\n"},
    {"turned inside out", {2, 1}, {2, 1, 0, 0}, "r\n", {}, "..\n"},
};

TEST(pvOverlapImage, PlacesPictures) {
    for (const Placed& c : kPlaced) {
        const Canvas canvas(c.canvas.cx, c.canvas.cy);
        const PicturePtr picture = pictureOf(c.picture);
        pvOverlapImageRect(canvas.hdc(), c.area, picture.get(), c.placing);
        EXPECT_EQ(canvas.picture(), c.result) << c.name;
        EXPECT_EQ(platform::handleCount(platform::HandleKind::DeviceContext), 1);
        EXPECT_EQ(platform::handleCount(platform::HandleKind::Bitmap), 2);
    }
}

TEST(pvOverlapImage, TakesBitmapsOfAnyDepth) {
    for (const int bits : {4, 8, 24, 32}) {
        const Canvas canvas(2, 2);
        pvOverlapImage(canvas.hdc(), 0, 0, 2, 2, pictureOf("rg\n#b\n", bits).get(),
                       {.bPicTransparent = true, .lPicTranspColor = 0});
        EXPECT_EQ(canvas.picture(), "rg\n.b\n") << bits;
    }
}

TEST(pvOverlapImage, TurnsPicturesToAPaleGrey) {
    const struct {
        Color from;
        int grey;
    } kCases[] = {
        {0, 134},
        {rgb(255, 255, 255), 211},
        {rgb(255, 0, 0), 157},
        {rgb(0, 255, 0), 179},
        {rgb(0, 0, 255), 142},
        {rgb(100, 100, 100), 164},
    };
    for (const auto& c : kCases) {
        clsMEMDC source;
        source.CreateDC(1, 1);
        source.DrawBackColor(c.from);
        const PicturePtr picture = source.Picture();
        const Canvas canvas(1, 1);
        pvOverlapImage(canvas.hdc(), 0, 0, 1, 1, picture.get(), {.bPicGrayed = true});
        EXPECT_EQ(platform::GetPixel(canvas.hdc(), 0, 0), rgb(c.grey, c.grey, c.grey)) << c.from;
    }
}

TEST(pvOverlapImage, DrawsNothingWithoutAPicture) {
    const Canvas canvas(2, 2), busy(2, 2);
    const PictureObject noHandle({platform::PICTYPE_BITMAP, 0}, {2, 2}, false);
    const PictureObject inAContext({platform::PICTYPE_BITMAP, busy.bitmap()}, {2, 2}, false);
    const auto gone = [](const auto& make) {
        const PicturePtr picture = make();
        return platform::PICTDESC{picture->Type(), picture->Handle()};
    };
    const PictureObject stale(gone([] { return pictureOf("r\n"); }), {2, 2}, false);
    const PictureObject staleIcon(gone([] { return iconOf("#\n", "r\n"); }), {2, 2}, false);
    const PictureObject* kPictures[] = {nullptr, &noHandle, &inAContext, &stale, &staleIcon};
    for (const PictureObject* picture : kPictures) {
        pvOverlapImage(canvas.hdc(), 0, 0, 2, 2, picture, {.bPicGrayed = true});
        pvOverlapIcon(canvas.hdc(), 0, 0, 2, 2, picture, {});
    }
    const PicturePtr good = pictureOf("rg\nb#\n");
    pvOverlapImage(0, 0, 0, 2, 2, good.get(), {});
    pvOverlapImage(0, 0, 0, 2, 2, good.get(), {.bPicGrayed = true});
    pvOverlapIcon(canvas.hdc(), 0, 0, 2, 2, good.get(), {});  // a bitmap
    EXPECT_EQ(canvas.picture(), "..\n..\n");
    EXPECT_EQ(platform::liveHandles(), "device context 2, bitmap 3");
}

TEST(pvOverlapImage, HoldsAnAreaOfAnyExtent) {
    constexpr int kMax = std::numeric_limits<int>::max(), kMin = std::numeric_limits<int>::min();
    const Canvas canvas(2, 2);
    const PicturePtr picture = pictureOf("rg\nb#\n");
    for (const bool bPicGrayed : {false, true}) {
        pvOverlapImage(canvas.hdc(), kMin, kMin, kMax, kMax, picture.get(), {bPicGrayed});
        pvOverlapImage(canvas.hdc(), kMax - 1, kMax - 1, kMax, kMax, picture.get(), {bPicGrayed});
    }
    EXPECT_EQ(canvas.picture(), "..\n..\n");
    pvOverlapImage(canvas.hdc(), -50'000, -50'000, 50'002, 50'002, picture.get(),
                   {.bPicTransparent = true});
    EXPECT_EQ(canvas.picture(), ".g\nb#\n");
}

// ---- Icons

TEST(pvGetIconDibs, SplitsAnIconIntoImagesOfTheirOwnDepth) {
    const PicturePtr colored = iconOf("#.\n", "rg\n"), plain = iconOf("#.\n.#\n", "");
    const IconDibs icon = pvGetIconDibs(colored->Handle());
    EXPECT_TRUE(icon.bIsIcon);
    EXPECT_EQ(icon.iXHotSpot, 1);
    EXPECT_EQ(icon.iYHotSpot, 2);
    EXPECT_EQ(icon.oMask.Bpp(), 1);
    EXPECT_EQ(icon.oColor.Bpp(), 24);
    EXPECT_EQ(icon.oColor.Width(), 2);
    EXPECT_FALSE(pvGetIconDibs(iconOf("#\n", "r\n", false)->Handle()).bIsIcon);
    EXPECT_EQ(pvGetIconDibs(plain->Handle()).oColor.hDib(), 0U);
    EXPECT_EQ(pvGetIconDibs(plain->Handle()).oMask.Height(), 2);
    EXPECT_EQ(pvGetIconDibs(0).oMask.hDib(), 0U);
}

TEST(pvOverlapImage, PlacesIcons) {
    const std::string mask = "###\n#.#\n###\n", color = "rgb\nyyx\nb#r\n";
    const Placed kIcons[] = {
        {"opaque", {3, 3}, {0, 0, 3, 3}, color, {}, "rgb\nyyx\nb#r\n"},
        {"by its mask", {3, 3}, {0, 0, 3, 3}, color, {.bPicTransparent = true}, "rgb\ny.x\nb#r\n"},
        {"odd room: half a pixel goes to the even place",
         {6, 4},
         {0, 0, 6, 4},
         color,
         {.bPicTransparent = true},
         "..rgb.\n..y.x.\n..b#r.\n......\n"},
        {"the same from an odd start",
         {8, 6},
         {1, 1, 7, 5},
         color,
         {.bPicTransparent = true},
         "........\n........\n..rgb...\n..y.x...\n..b#r...\n........\n"},
        {"one column and one row more than asked for",
         {3, 3},
         {0, 0, 3, 3},
         color,
         {.iPicWidth = 1, .iPicHeight = 0},
         "...\n...\n.rg\n"},
        {"one column when none was asked for",
         {3, 3},
         {0, 0, 3, 3},
         color,
         {.iPicWidth = 0},
         "..r\n..y\n..b\n"},
        {"beyond a small area", {4, 4}, {0, 0, 2, 2}, color, {}, "rgb.\nyyx.\nb#r.\n....\n"},
        {"a black and white one", {2, 2}, {0, 0, 2, 2}, "", {.bPicTransparent = true}, "#.\n.#\n"},
    };
    for (const Placed& c : kIcons) {
        const Canvas canvas(c.canvas.cx, c.canvas.cy);
        const PicturePtr icon =
            c.picture.empty() ? iconOf("#.\n##\n#.\n.#\n", "") : iconOf(mask, c.picture);
        ASSERT_NE(icon, nullptr);
        pvOverlapImageRect(canvas.hdc(), c.area, icon.get(), c.placing);
        EXPECT_EQ(canvas.picture(), c.result) << c.name;
    }
}

TEST(pvOverlapImage, TakesASquareOfABlackAndWhiteIcon) {
    const struct {
        std::string mask, picture;
    } kCases[] = {
        {"##\n##\n##\n.#\n#.\n##\n", ".#..\n#...\n....\n....\n"},  // its third row is cut
        // The row that it lacks is black, and shows where there is a mask.
        {"##\n#.\n", "#...\n#...\n....\n....\n"},
    };
    for (const auto& c : kCases) {
        const Canvas canvas(4, 4);
        pvOverlapImage(canvas.hdc(), 0, 0, 2, 2, iconOf(c.mask, "").get(),
                       {.bPicTransparent = true});
        EXPECT_EQ(canvas.picture(), c.picture) << c.mask;
    }
}

TEST(pvOverlapImage, TurnsIconsToTheSameGrey) {
    const Canvas canvas(2, 1);
    pvOverlapImage(canvas.hdc(), 0, 0, 2, 1, iconOf("#.\n", "r#\n").get(),
                   {.bPicGrayed = true, .bPicTransparent = true});
    EXPECT_EQ(platform::GetPixel(canvas.hdc(), 0, 0), rgb(157, 157, 157));
    EXPECT_EQ(platform::GetPixel(canvas.hdc(), 1, 0), rgb(255, 255, 255));
}

TEST(pvBuildSA3D, AddressesRowsFromTheBottom) {
    clsDIBSection section;
    section.CreateDC(3, 2, 32);
    platform::SetPixel(section.Hdc(), 2, 0, rgb(10, 20, 30));
    const PixelView view = pvBuildSA3D(section);
    EXPECT_EQ(view(1, 2, 0), 30);
    EXPECT_EQ(view(1, 2, 1), 20);
    EXPECT_EQ(view(1, 2, 2), 10);
    view(0, 0, 1) = 255;
    EXPECT_EQ(platform::GetPixel(section.Hdc(), 0, 1), rgb(0, 255, 0));
    section.CreateDC(3, 2, 24);
    EXPECT_EQ(test::raised([&] { (void)pvBuildSA3D(section); }),
              "pvBuildSA3D: Cannot create Safe Array for this DIB bpp");
    (void)test::raised([&] { section.CreateDC(40'000, 2, 32); });  // knows its size, has no pixels
    EXPECT_EQ(test::raised([&] { (void)pvBuildSA3D(section); }),
              "pvBuildSA3D: Cannot create Safe Array for this DIB bpp");
}

}  // namespace
