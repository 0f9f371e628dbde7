// platform/window/text_face.h: faces, which are fonts as they are drawn. Internal to this folder.
#pragma once
#include "platform/window/surface_internal.h"
#include "platform/window/text_glyphs.h"

#include <memory>

class QFont;

namespace platform {

// What a font wishes for; see CreateFontW.
struct FaceWish {
    Text name;
    std::int32_t height = -11, width = 0, weight = 400;
    bool italic = false, underline = false, strikeOut = false;
    friend bool operator==(const FaceWish&, const FaceWish&) = default;
};

// Pixels; rows and lines count from the top of a line of text.
struct FaceMetrics {
    std::int32_t em = 0, ascent = 0, descent = 0, externalLeading = 0;
    std::int32_t averageWidth = 0, maxWidth = 0;
    std::int32_t underlineTop = 0, strikeOutTop = 0, lineThickness = 1;
    [[nodiscard]] std::int32_t height() const { return ascent + descent; }
};

// A wish fulfilled. Fonts that wish the same share one face (see faceFor), so that the caches
// outlive the fonts that a control makes and deletes at each paint.
struct Face {
    Face(std::uint32_t id, FaceWish wish);
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    std::uint32_t id;  // of this face in the caches, never used again
    FaceWish wish;
    FaceMetrics metrics;
    std::unique_ptr<QFont> font;         // the toolkit's
    std::unique_ptr<QFont> pictographs;  // the same with colours; none when the system has none
    // Characters below kGlyphLimit come out the same whatever stands beside them.
    bool contextFree = false;
    GlyphTable glyphs;
};

// The record behind a font handle.
struct FontData {
    std::shared_ptr<Face> face;
};

// The face of what is asked for: one of the last kKeptFaces that were asked for, whether a font has
// them or not, else a new one.
[[nodiscard]] std::shared_ptr<Face> faceFor(const FaceWish& asked);
constexpr std::size_t kKeptFaces = 32;

// The face of a font; the stock font is "MS Sans Serif" with an em height of 11 pixels.
[[nodiscard]] Face& faceOf(const FontRecord& font);
[[nodiscard]] inline Face& faceOf(const DcRecord& dc) { return faceOf(*dc.font); }

// A font for the toolkit's own widgets, such as native edit windows, with underlining and striking
// out; the stock font's for 0 and unknown handles.
[[nodiscard]] QFont toolkitFontOf(HFONT hFont);

// Forgets all faces that no font has and everything that is cached about text: for a change of the
// desktop's fonts or resolution. Also runs when the application object ends.
void clearTextCaches();

}  // namespace platform
