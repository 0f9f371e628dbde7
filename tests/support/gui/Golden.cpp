#include "support/gui/Golden.h"

#include "support/window/Canvas.h"

#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <iomanip>

namespace test {
namespace {

namespace fs = std::filesystem;
constexpr std::uint32_t kColorBits = 0x00FFFFFF;

Picture loaded(const fs::path& file) {
    const QImage image =
        QImage(QString::fromStdString(file.string())).convertToFormat(QImage::Format_RGB32);
    Picture picture{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) picture.pixels.push_back(row[x] & kColorBits);
    }
    return picture;
}

bool stored(const Picture& picture, const fs::path& file) {
    fs::create_directories(file.parent_path());
    const QImage image(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width,
                       picture.height, picture.width * 4, QImage::Format_RGB32);
    return image.save(QString::fromStdString(file.string()), "PNG");
}

// The actual picture paled, with the pixels that differ in red.
Picture difference(const Picture& expected, const Picture& actual) {
    Picture result = actual;
    for (int y = 0; y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            const auto at = static_cast<std::size_t>(y) * actual.width + x;
            const bool same = x < expected.width && y < expected.height &&
                              expected.pixels[static_cast<std::size_t>(y) * expected.width + x] ==
                                  actual.pixels[at];
            std::uint32_t& pixel = result.pixels[at];
            pixel = same ? 0xC0C0C0 + (pixel >> 2 & 0x3F3F3F) : 0xFF0000;
        }
    }
    return result;
}

struct Color {
    std::uint32_t value;
};
std::ostream& operator<<(std::ostream& out, Color color) {
    const auto flags = out.flags();
    out << '#' << std::hex << std::uppercase << std::setw(6) << std::setfill('0') << color.value;
    out.flags(flags);
    return out;
}

}  // namespace

Picture painted(platform::SIZE size, const std::function<void(platform::HDC)>& paint) {
    const Canvas canvas(size.cx, size.cy, 32);
    paint(canvas.hdc());
    Picture picture{size.cx, size.cy, {}};
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(canvas.bits());
    for (int y = size.cy - 1; y >= 0; --y) {  // a section begins with its bottom row
        const auto* row = pixels + static_cast<std::ptrdiff_t>(y) * size.cx;
        std::transform(row, row + size.cx, std::back_inserter(picture.pixels),
                       [](std::uint32_t pixel) { return pixel & kColorBits; });
    }
    return picture;
}

testing::AssertionResult comparePicture(const Picture& actual, const std::string& name,
                                        const fs::path& golden, const fs::path& leftOver,
                                        bool update) {
    const fs::path file = golden / (name + ".png");
    const Picture expected = fs::exists(file) ? loaded(file) : Picture{};
    const bool sameSize = expected.width == actual.width && expected.height == actual.height;
    if (sameSize && expected.pixels == actual.pixels) return testing::AssertionSuccess();
    if (update) {
        if (stored(actual, file)) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "cannot write " << file;
    }

    auto failure = testing::AssertionFailure();
    stored(actual, leftOver / (name + ".actual.png"));
    if (expected.pixels.empty()) {
        failure << "no picture " << file;
    } else {
        stored(expected, leftOver / (name + ".expected.png"));
        stored(difference(expected, actual), leftOver / (name + ".difference.png"));
        if (!sameSize) {
            failure << "size is " << actual.width << " x " << actual.height << ", not "
                    << expected.width << " x " << expected.height;
        } else {
            const auto [is, was] =
                std::mismatch(actual.pixels.begin(), actual.pixels.end(), expected.pixels.begin());
            const auto at = is - actual.pixels.begin();
            failure << "pixel (" << at % actual.width << ", " << at / actual.width << ") is "
                    << Color{*is} << ", not " << Color{*was};
        }
    }
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    return failure << "; see " << (leftOver / name).string() << ".*.png. When the new picture is "
                   << "right: ./dev golden " << test->test_suite_name() << '.' << test->name();
}

testing::AssertionResult matchesGolden(const std::string& name, const Picture& picture) {
    return comparePicture(picture, name, QUILLMERE_SOURCE_DIR "/tests/golden",
                          QUILLMERE_BUILD_DIR "/golden",
                          std::getenv("QUILLMERE_REWRITE_GOLDEN") != nullptr);
}

testing::AssertionResult matchesGolden(const std::string& name, platform::SIZE size,
                                       const std::function<void(platform::HDC)>& paint) {
    return matchesGolden(name, painted(size, paint));
}

}  // namespace test
