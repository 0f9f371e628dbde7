#include "platform/window/recorder.h"

#include "platform/window/surface_internal.h"

#include <cstdarg>
#include <cstdio>

namespace platform {

DrawingRecorder::DrawingRecorder(HDC only) : m_only(only), m_outer(detail::recorder) {
    detail::recorder = this;
}

DrawingRecorder::~DrawingRecorder() { detail::recorder = m_outer; }

std::string DrawingRecorder::text() const {
    std::string all;
    for (const std::string& line : m_lines) all += line + '\n';
    return all;
}

void record(HDC hDC, const char* format, ...) {
    DrawingRecorder* recorder = detail::recorder;
    if (recorder == nullptr || (recorder->m_only != 0 && recorder->m_only != hDC)) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string line(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(line.data(), line.size() + 1, format, again);
    va_end(again);
    recorder->m_lines.push_back(std::move(line));
}

std::string recordedRect(const RECT& rect) {
    return std::to_string(rect.left) + ',' + std::to_string(rect.top) + ',' +
           std::to_string(rect.right) + ',' + std::to_string(rect.bottom);
}

std::string recordedColor(COLORREF color) {
    char text[8];
    std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(pixelOf(color) & 0xFFFFFF));
    return text;
}

std::string recordedText(TextView text) {
    std::string quoted = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        const bool pair =
            (unit & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
        if (unit == u'"' || unit == u'\\') {
            quoted += '\\';
            quoted += static_cast<char>(unit);
        } else if (pair) {
            quoted += toUtf8(text.substr(i++, 2));
        } else if (unit < 0x20 || (unit & 0xF800) == 0xD800) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(unit));
            quoted += escape;
        } else {
            quoted += toUtf8(text.substr(i, 1));
        }
    }
    return quoted + '"';
}

}  // namespace platform
