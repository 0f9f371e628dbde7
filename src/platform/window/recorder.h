// platform/window/recorder.h: the drawing calls as lines of text, for tests that look at the order
// of drawing instead of pixels.
#pragma once
#include "platform/window/types.h"

#include <string>
#include <vector>

namespace platform {

// Records every drawing call from construction to destruction, one line a call: its name, where,
// and the colours in effect as #RRGGBB:
//
//   FillRect 0,0,10,5 #FF0000
//   LineTo 0,0 10,0 #000000 width 1 style 0
//   DrawTextW 4,0,60,19 #000000 flags 0x824 "Section"
//
// Setting state (SelectObject, SetTextColor, ...) gives no line: what it changes shows in the calls
// that use it. A call that does nothing because its context is 0 or stale gives none either.
// Recorders nest; the innermost hears the calls.
class DrawingRecorder {
public:
    // only: the context whose calls are recorded; 0 records all.
    explicit DrawingRecorder(HDC only = 0);
    ~DrawingRecorder();
    DrawingRecorder(const DrawingRecorder&) = delete;
    DrawingRecorder& operator=(const DrawingRecorder&) = delete;

    [[nodiscard]] const std::vector<std::string>& lines() const { return m_lines; }
    [[nodiscard]] std::string text() const;  // all lines, each ended by LF
    void clear() { m_lines.clear(); }

private:
    friend void record(HDC hDC, const char* format, ...);
    HDC m_only;
    DrawingRecorder* m_outer;
    std::vector<std::string> m_lines;
};

namespace detail {
inline DrawingRecorder* recorder = nullptr;
}

// For the drawing operations. Ask first: if (recording()) record(hDC, ...); so that a call costs
// one branch while nobody listens.
inline bool recording() { return detail::recorder != nullptr; }
// The line of one call, put together as by printf.
[[gnu::format(printf, 2, 3)]] void record(HDC hDC, const char* format, ...);
// The parts of a line: "0,0,10,5", "#FF0000", and a text in quotes with its control units and lone
// surrogates as \uXXXX.
[[nodiscard]] std::string recordedRect(const RECT& rect);
[[nodiscard]] std::string recordedColor(COLORREF color);
[[nodiscard]] std::string recordedText(TextView text);

}  // namespace platform
