#include "support/gui/Golden.h"

#include "platform/window/surface.h"
#include "support/TempDir.h"

using test::Picture;

namespace {

Picture onePixelOff(Picture picture) {
    picture.pixels[4] = 0x123456;  // (1, 1) of a picture that is 3 wide
    return picture;
}

}  // namespace

TEST(Golden, ComparesEveryPixelAndNamesTheFirstThatDiffers) {
    const test::TempDir dir;
    const auto golden = dir.path() / "golden", leftOver = dir.path() / "left";
    const auto compare = [&](const Picture& picture, bool update = false) {
        return test::comparePicture(picture, "a/b", golden, leftOver, update);
    };
    const Picture picture{3, 2, {0, 0xFF, 0xFF00, 0xFF0000, 0xFFFFFF, 0x808080}};

    const auto missing = compare(picture);
    EXPECT_FALSE(missing);
    EXPECT_NE(std::string(missing.message()).find("no picture"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(golden));

    EXPECT_TRUE(compare(picture, true)) << "written";
    EXPECT_TRUE(compare(picture)) << "the same again";

    const auto other = compare(onePixelOff(picture));
    EXPECT_FALSE(other);
    EXPECT_EQ(std::string(other.message()).substr(0, 38), "pixel (1, 1) is #123456, not #FFFFFF; ");
    for (const char* kind : {"expected", "actual", "difference"}) {
        EXPECT_TRUE(std::filesystem::exists(leftOver / "a" / (std::string("b.") + kind + ".png")));
    }
    EXPECT_FALSE(compare(Picture{2, 3, picture.pixels})) << "the same pixels in another shape";
}

TEST(Golden, PaintsOnAWhiteSurfaceWithTheTopRowFirst) {
    using namespace platform;
    const Picture picture = test::painted({2, 2}, [](HDC hDC) {
        FillRect(hDC, {1, 0, 2, 1}, GetStockObject(BLACK_BRUSH));
    });
    EXPECT_EQ(picture.pixels, (std::vector<std::uint32_t>{0xFFFFFF, 0, 0xFFFFFF, 0xFFFFFF}));
}
