#include "platform/window/fonts.h"

#include "platform/base/codepages.h"
#include "platform/window/text_face.h"

#include <algorithm>

namespace platform {

HFONT CreateFontW(int height, int width, int /*escapement*/, int /*orientation*/, int weight,
                  std::uint32_t italic, std::uint32_t underline, std::uint32_t strikeOut,
                  std::uint32_t /*charSet*/, std::uint32_t /*outPrecision*/,
                  std::uint32_t /*clipPrecision*/, std::uint32_t /*quality*/,
                  std::uint32_t /*pitchAndFamily*/, TextView faceName) {
    FontRecord record;
    record.data = std::make_shared<const FontData>(FontData{faceFor(
        {Text(faceName), height, width, weight, italic != 0, underline != 0, strikeOut != 0})});
    return addObject(fontTable(), std::move(record));
}

Text faceNameOf(const LOGFONTA& font) {
    const char* end = std::find(std::begin(font.lfFaceName), std::end(font.lfFaceName), '\0');
    return bytesToText(reinterpret_cast<const std::uint8_t*>(font.lfFaceName),
                       static_cast<std::size_t>(end - font.lfFaceName), GetACP());
}

bool setFaceName(LOGFONTA& font, TextView name) {
    const Bytes bytes = textToBytes(name, GetACP());
    if (bytes.size() >= sizeof font.lfFaceName) return false;
    if (bytesToText(bytes.data(), bytes.size(), GetACP()) != name) return false;
    if (name.find(u'\0') != TextView::npos) return false;  // it would end there
    std::fill(std::ranges::copy(bytes, font.lfFaceName).out, std::end(font.lfFaceName), '\0');
    return true;
}

HFONT CreateFontIndirectA(const LOGFONTA& font) {
    return CreateFontW(font.lfHeight, font.lfWidth, font.lfEscapement, font.lfOrientation,
                       font.lfWeight, font.lfItalic, font.lfUnderline, font.lfStrikeOut,
                       font.lfCharSet, font.lfOutPrecision, font.lfClipPrecision, font.lfQuality,
                       font.lfPitchAndFamily, faceNameOf(font));
}

bool GetTextMetricsA(HDC hDC, TEXTMETRICA& metrics) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    const Face& face = faceOf(*dc);
    const FaceMetrics& known = face.metrics;
    metrics = {};
    metrics.tmHeight = known.height();
    metrics.tmAscent = known.ascent;
    metrics.tmDescent = known.descent;
    metrics.tmInternalLeading = std::max(0, known.height() - known.em);
    metrics.tmExternalLeading = known.externalLeading;
    metrics.tmAveCharWidth = known.averageWidth;
    metrics.tmMaxCharWidth = known.maxWidth;
    metrics.tmWeight = face.wish.weight;
    metrics.tmItalic = face.wish.italic ? 1 : 0;
    metrics.tmUnderlined = face.wish.underline ? 1 : 0;
    metrics.tmStruckOut = face.wish.strikeOut ? 1 : 0;
    return true;
}

}  // namespace platform
