#include "platform/window/text_glyphs.h"

#include "platform/window/surface_internal.h"
#include "platform/window/text_face.h"
#include "platform/window/text_shape.h"

#include <gtest/gtest.h>
#include <random>

using namespace platform;

namespace {

// Every character that the face draws by itself.
Text charactersOf(Face& face) {
    Text all;
    for (char16_t unit = 0; unit < kGlyphLimit; ++unit) {
        if (face.glyphs.width(face, {&unit, 1}) >= 0) all += unit;
    }
    return all;
}

std::uint8_t at(const std::uint8_t* mask, std::ptrdiff_t stride, const RECT& box, int x, int y) {
    const bool inside = x >= box.left && x < box.right && y >= box.top && y < box.bottom;
    return inside ? mask[(y - box.top) * stride + (x - box.left)] : 0;
}

// Empty when putting the characters side by side gives what shaping gives, else where it doesn't.
std::string difference(Face& face, TextView text) {
    const ShapedText shape = shapedNow(face, text, {});
    const std::int64_t width = face.glyphs.width(face, text);
    if (width < 0) return "needs shaping";
    if (width * 64 != shape.advance) return "width " + std::to_string(width);
    const RECT box = face.glyphs.box(static_cast<std::int32_t>(width));
    const RECT shapeBox{shape.left, shape.top, shape.left + shape.boxWidth,
                        shape.top + shape.boxHeight};
    if (!shape.mask.empty() && intersection(box, shapeBox) != shapeBox) return "box";
    Coverage coverage;
    face.glyphs.cover(text, box, coverage);
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x) {
            if (at(coverage.bytes.data(), coverage.stride, box, x, y) !=
                at(shape.mask.data(), shape.boxWidth, shapeBox, x, y)) {
                return "pixel " + std::to_string(x) + ',' + std::to_string(y);
            }
        }
    }
    return {};
}

}  // namespace

TEST(GlyphTable, GivesThePixelsThatShapingGives) {
    std::mt19937 random(3);
    for (const int em : {8, 11, 12, 13, 16, 19, 24, 64}) {
        for (const int style : {0, 1, 2, 3}) {
            Face& face =
                *faceFor({u"Tahoma", -em, 0, (style & 1) != 0 ? 700 : 400, (style & 2) != 0});
            const Text all = charactersOf(face);
            ASSERT_GT(all.size(), 800U) << "Latin, Greek and Cyrillic";
            for (int i = 0; i < 12; ++i) {
                Text text;
                // Every second one plain English letters, which touch each other more often.
                while (text.size() < 60) {
                    text += i % 2 == 0 ? all[random() % all.size()]
                                       : static_cast<char16_t>(u' ' + random() % 95);
                }
                EXPECT_EQ(difference(face, text), "")
                    << em << " pixels, style " << style << ": " << toUtf8(text);
            }
        }
    }
}

TEST(GlyphTable, LeavesToShapingWhatDependsOnItsNeighbours) {
    Face& face = *faceFor({u"Tahoma", -11});
    for (const TextView text : {u"e\u0301", u"a\u00ADb", u"a\u02DE", u"\u05D0", u"\u4E00", u"a\tb",
                                u"a\u200Db", u"\u0483"}) {
        EXPECT_EQ(face.glyphs.width(face, text), -1) << toUtf8(text);
    }
    EXPECT_GE(face.glyphs.width(face, u""), 0);
    // A face with ligatures, and one whose masks would be too large.
    Face& thai = *faceFor({u"Noto Sans Thai", -11});
    EXPECT_FALSE(thai.contextFree);
    EXPECT_EQ(thai.glyphs.width(thai, u"a"), -1);
    Face& huge = *faceFor({u"Tahoma", -kMaxGlyphEm - 1});
    EXPECT_EQ(huge.glyphs.width(huge, u"a"), -1);
}

TEST(GlyphTable, CoversAnyWindowAsItCoversTheWhole) {
    Face& face = *faceFor({u"Tahoma", -24, 0, 400, true});
    const TextView text = u"fWj\u00C4 /Wf";
    const auto width = static_cast<std::int32_t>(face.glyphs.width(face, text));
    const RECT whole = face.glyphs.box(width);
    Coverage all, part;
    face.glyphs.cover(text, whole, all);
    std::mt19937 random(5);
    const auto pick = [&](int from, int to) {
        return from + static_cast<int>(random() % static_cast<unsigned>(to - from));
    };
    for (int i = 0; i < 200; ++i) {
        const int left = pick(whole.left, whole.right), top = pick(whole.top, whole.bottom);
        const RECT window{left, top, pick(left, whole.right) + 1, pick(top, whole.bottom) + 1};
        face.glyphs.cover(text, window, part);
        for (int y = window.top; y < window.bottom; ++y) {
            for (int x = window.left; x < window.right; ++x) {
                ASSERT_EQ(at(part.bytes.data(), part.stride, window, x, y),
                          at(all.bytes.data(), all.stride, whole, x, y))
                    << x << ',' << y << " in " << window.left << ".." << window.right;
            }
        }
    }
}
