#include "platform/window/handles.h"

namespace platform {
namespace {

constexpr std::array<const char*, kHandleKinds> kNames{
    "",       "device context", "bitmap", "font", "brush",  "pen",
    "region", "icon",           "window", "menu", "monitor"};

}  // namespace

int handleCount(HandleKind kind) {
    return detail::liveHandleCounts[static_cast<std::size_t>(kind)];
}

std::string liveHandles() {
    std::string all;
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (detail::liveHandleCounts[i] == 0) continue;
        if (!all.empty()) all += ", ";
        all += kNames[i];
        all += ' ' + std::to_string(detail::liveHandleCounts[i]);
    }
    return all;
}

}  // namespace platform
