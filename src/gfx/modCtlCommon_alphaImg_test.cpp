#include "gfx/modCtlCommon_alphaImg.h"

#include "gfx/clsGdiHandle.h"
#include "platform/window/handles.h"
#include "support/raised.h"
#include "support/window/Canvas.h"

#include <gtest/gtest.h>
#include <limits>
#include <optional>

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

// A canvas of the result's size, white at first; the area is all of it unless it is told.
struct Placed {
    const char* name;
    std::string picture;
    ImagePlacing placing;
    std::string result;
    std::optional<RECT> area = std::nullopt;
};

void expectPlaced(const Placed& c, const PictureObject* picture) {
    const Canvas canvas = Canvas::asLargeAs(c.result);
    const RECT area = c.area.value_or(RECT{0, 0, canvas.size().cx, canvas.size().cy});
    pvOverlapImageRect(canvas.hdc(), area, picture, c.placing);
    EXPECT_EQ(canvas.picture(), c.result) << c.name;
}

TEST(pvOverlapImage, PlacesPictures) {
    const std::string four = "rg\nb#\n", six = "rgr\nrrb\n", nine = "rgb\nyxr\nbbb\n";
    const Placed kPlaced[] = {
        {"as it is", four, {}, ".rg.\n.b#.\n....\n"},
        {"odd room: to the left and up", four, {}, ".....\n.rg..\n.b#..\n.....\n.....\n"},
        {"odd room, one colour left out: lower by one",
         four,
         {.bPicTransparent = true, .lPicTranspColor = 0},
         ".....\n.....\n.rg..\n.b...\n.....\n"},
        {"cut at the right and at the bottom",
         nine,
         {},
         "....\n.rg.\n.yx.\n....\n",
         RECT{1, 1, 3, 3}},
        {"cut and transparent",
         nine,
         {.bPicTransparent = true},
         "....\n..g.\n.yx.\n....\n",
         RECT{1, 1, 3, 3}},
        {"cut to a size of its own",
         nine,
         {.iPicWidth = 2, .iPicHeight = 1},
         "....\n.rg.\n....\n....\n"},
        {"a size beyond the picture's", four, {.iPicWidth = 9, .iPicHeight = 9}, ".rg.\n.b#.\n"},
        {"a size of 0", four, {.bPicGrayed = true, .iPicWidth = 0}, "..\n..\n"},
        {"the colour of a pixel", six, {.bPicTransparent = true}, ".g.\n..b\n"},
        {"the colour of another pixel",
         six,
         {.bPicTransparent = true, .lPicXTransp = 2, .lPicYTransp = 1},
         "rgr\nrr.\n"},
        {"the colour of a pixel outside", six, {.bPicTransparent = true, .lPicXTransp = 9}, six},
        {"a colour without transparency", six, {.lPicTranspColor = rgb(255, 0, 0)}, six},
        {"partly outside",
         "rgb\nyxr\nbb#\nr##\n",
         {.bPicTransparent = true, .lPicTranspColor = 0},
         "r..\n...\n",
         RECT{-2, -1, 2, 3}},
        {"no room", "r\n", {}, "..\n", RECT{1, 0, 1, 1}},
        {"turned inside out", "r\n", {}, "..\n", RECT{2, 1, 0, 0}},
    };
    for (const Placed& c : kPlaced) expectPlaced(c, pictureOf(c.picture).get());
}

TEST(pvOverlapImage, PlacesIcons) {
    const std::string color = "rgb\nyyx\nb#r\n";
    const PicturePtr icon = iconOf("###\n#.#\n###\n", color);
    const Placed kIcons[] = {
        {"opaque", color, {}, color},
        {"by its mask", color, {.bPicTransparent = true}, "rgb\ny.x\nb#r\n"},
        {"odd room: half a pixel goes to the even place",
         color,
         {.bPicTransparent = true},
         "..rgb.\n..y.x.\n..b#r.\n......\n"},
        {"the same from an odd start",
         color,
         {.bPicTransparent = true},
         "........\n........\n..rgb...\n..y.x...\n..b#r...\n........\n",
         RECT{1, 1, 7, 5}},
        {"one column and one row more than asked for",
         color,
         {.iPicWidth = 1, .iPicHeight = 0},
         "...\n...\n.rg\n"},
        {"one column when none was asked for", color, {.iPicWidth = 0}, "..r\n..y\n..b\n"},
        {"beyond a small area", color, {}, "rgb.\nyyx.\nb#r.\n....\n", RECT{0, 0, 2, 2}},
    };
    for (const Placed& c : kIcons) expectPlaced(c, icon.get());

    // Black and white ones: a mask with the picture below it, of which a square is taken.
    const Placed kMonochrome[] = {
        {"two squares", "#.\n##\n#.\n.#\n", {.bPicTransparent = true}, "#.\n.#\n"},
        {"the third row of the picture is cut",
         "##\n##\n##\n.#\n#.\n##\n",
         {.bPicTransparent = true},
         ".#..\n#...\n....\n....\n",
         RECT{0, 0, 2, 2}},
        {"the row that it lacks is black, and shows where there is a mask",
         "##\n#.\n",
         {.bPicTransparent = true},
         "#...\n#...\n....\n....\n",
         RECT{0, 0, 2, 2}},
    };
    for (const Placed& c : kMonochrome) expectPlaced(c, iconOf(c.picture, "").get());
}

TEST(pvOverlapImage, TakesBitmapsOfAnyDepth) {
    for (const int bits : {4, 8, 24, 32}) {
        const Placed placed{"", "", {.bPicTransparent = true, .lPicTranspColor = 0}, "rg\n.b\n"};
        expectPlaced(placed, pictureOf("rg\n#b\n", bits).get());
    }
}

TEST(pvOverlapImage, TurnsPicturesAndIconsToAPaleGrey) {
    const std::pair<std::string, int> kLetters[] = {{"#", 134}, {".", 211}, {"r", 157}, {"g", 179},
                                                    {"b", 142}, {"y", 203}, {"x", 173}};
    for (const auto& [letter, grey] : kLetters) {
        for (const PicturePtr& picture : {pictureOf(letter + '\n'), iconOf("#\n", letter + '\n')}) {
            const Canvas canvas(1, 1);
            pvOverlapImage(canvas.hdc(), 0, 0, 1, 1, picture.get(), {.bPicGrayed = true});
            EXPECT_EQ(platform::GetPixel(canvas.hdc(), 0, 0), rgb(grey, grey, grey)) << letter;
        }
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
    const std::string refusal = "pvBuildSA3D: Cannot create Safe Array for this DIB bpp";
    EXPECT_EQ(test::raised([&] { (void)pvBuildSA3D(section); }), refusal);
    (void)test::raised([&] { section.CreateDC(40'000, 2, 32); });  // knows its size, has no pixels
    EXPECT_EQ(test::raised([&] { (void)pvBuildSA3D(section); }), refusal);
}

}  // namespace
