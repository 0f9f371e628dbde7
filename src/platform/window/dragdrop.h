// platform/window/dragdrop.h: dragging data into windows and out of them.
#pragma once
#include "platform/window/messages.h"

#include <functional>
#include <vector>

namespace platform {

// What becomes of the dragged data: a sum in what is allowed, one of them in what is done.
enum : std::int32_t { DROPEFFECT_NONE = 0, DROPEFFECT_COPY = 1, DROPEFFECT_MOVE = 2 };

// The data of a drag, by the names that the desktops share: "text/plain" (UTF-8), "text/rtf" and
// other types of content.
class DragData {
public:
    virtual ~DragData() = default;
    [[nodiscard]] virtual std::vector<std::string> formats() const = 0;
    [[nodiscard]] virtual Text text() const = 0;                // empty: none
    [[nodiscard]] virtual std::vector<Text> files() const = 0;  // paths in the inside form
    [[nodiscard]] virtual Bytes bytes(const std::string& format) const = 0;
};

struct DragPosition {
    POINT at;            // client pixels
    WPARAM buttons = 0;  // MK_... of what is down, Shift and Ctrl included
    std::int32_t allowed = DROPEFFECT_NONE;
};
enum class DragState : std::uint8_t { Enter = 0, Leave = 1, Over = 2 };

// Gets the drags over a window. The effects that come back say what a drop there would do or did.
// What it raises ends at the message loop and counts as DROPEFFECT_NONE.
class DropTarget {
public:
    virtual ~DropTarget() = default;
    // data is nullptr in the state Leave, whose result has no influence.
    virtual std::int32_t dragOver(const DragData* data, const DragPosition& position,
                                  DragState state) = 0;
    virtual std::int32_t drop(const DragData& data, const DragPosition& position) = 0;
};
// The target must live as long as the window or until nullptr takes its place. It comes ahead of
// DragAcceptFiles. False for an unknown window.
bool setDropTarget(HWND hWnd, DropTarget* target);

// What a drag out of a window carries. A format without bytes is asked for when somebody wants it.
struct DragContent {
    Text text;
    std::vector<Text> files;  // paths in the inside form
    struct Format {
        std::string name;
        Bytes bytes;
    };
    std::vector<Format> others;
    std::function<Bytes(const std::string& format)> provide;
};
// Called when the effect under the mouse changes; false asks for the window's own cursor in place
// of the usual one, where it is a picture.
using DragFeedback = std::function<bool(std::int32_t effect)>;
// Drags until the button is up and gives what was done; runs a message loop of its own.
// DROPEFFECT_NONE for an unknown window and a drag that was given up.
std::int32_t doDragDrop(HWND hWnd, const DragContent& content, std::int32_t allowed,
                        const DragFeedback& feedback);

}  // namespace platform
