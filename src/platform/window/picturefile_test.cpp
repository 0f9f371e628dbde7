#include "platform/window/picturefile.h"

#include "platform/base/paths.h"
#include "support/TempDir.h"
#include "support/window/Canvas.h"

#include <QImage>
#include <gtest/gtest.h>

namespace {

using test::Canvas;

const std::string kPicture = "rgb.\n"
                             "#.#y\n"
                             "xxxx\n";

std::string pictureIn(const test::TempDir& dir, const std::string& name) {
    const QImage image(QString::fromStdString((dir.path() / name).string()), "PNG");
    const Canvas canvas(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            platform::SetPixel(canvas.hdc(), x, y,
                               platform::rgb(color.red(), color.green(), color.blue()));
        }
    }
    return canvas.picture();
}

TEST(PictureFile, HoldsThePixelsOfABitmapOfAnyDepthTheRightWayUp) {
    const test::TempDir dir;
    for (const int bits : {0, 4, 8, 24, 32}) {
        const Canvas canvas(kPicture, bits);
        ASSERT_TRUE(platform::writePngFile(canvas.bitmap(), dir.inside("a.png"))) << bits;
        EXPECT_EQ(pictureIn(dir, "a.png"), kPicture) << bits;
    }
    const std::string blackAndWhite = "#.#\n...\n";
    const Canvas canvas(blackAndWhite, Canvas::kMonochrome);
    ASSERT_TRUE(platform::writePngFile(canvas.bitmap(), dir.inside("a.png")));
    EXPECT_EQ(pictureIn(dir, "a.png"), blackAndWhite);
}

TEST(PictureFile, SaysWhatItCannotWrite) {
    const test::TempDir dir;
    const Canvas canvas(kPicture);
    EXPECT_FALSE(platform::writePngFile(0, dir.inside("a.png")));
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "a.png"));
    EXPECT_FALSE(platform::writePngFile(canvas.bitmap(), dir.inside("no/a.png")));
    EXPECT_FALSE(platform::writePngFile(canvas.bitmap(), u"\\dev\\full"));
}

}  // namespace
