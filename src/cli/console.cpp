#include "cli/console.h"

#include "platform/base/clock.h"
#include "platform/base/paths.h"

#include <unistd.h>

namespace cli {
namespace {

constexpr std::uint32_t kPatience = 400;  // milliseconds before a bar is worth the flicker

// Where standard error cannot be written there is nobody left to tell.
void write(std::string_view s) { (void)!::write(STDERR_FILENO, s.data(), s.size()); }

}  // namespace

void say(TextView sMessage) { write("quillmere-cli: " + toUtf8(sMessage) + "\n"); }

void say(TextView sMessage, TextView sFile) {
    say(Text(sMessage) + u" (" + platform::pathForDisplay(sFile) + u")");
}

ProgressBar::ProgressBar()
    : m_isTerminal(::isatty(STDERR_FILENO) == 1), m_start(platform::GetTickCount()) {}

// Edits may have been waited for in between, from a person or a program.
void ProgressBar::showWait(TextView) { m_start = platform::GetTickCount(); }

void ProgressBar::advance(int percent) {
    constexpr int kCells = 40;
    m_percent = percent;
    if (percent == 0) return wipe();  // it is over
    if (!m_shown && platform::GetTickCount() - m_start < kPatience) return;
    m_shown = true;
    const auto full = static_cast<std::size_t>(percent * kCells / 100);
    write("\r[" + std::string(full, '#') + std::string(kCells - full, ' ') + "] " +
          std::to_string(percent) + " %\x1b[K");
}

void ProgressBar::wipe() {
    if (m_shown) write("\r\x1b[K");
    m_shown = false;
}

}  // namespace cli
