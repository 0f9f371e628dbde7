#include "cli/Output.h"

#include "platform/base/json.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {

Output::Output(int descriptor)
    : m_descriptor(descriptor), m_buffer(std::make_unique_for_overwrite<char[]>(kSize)) {}

bool Output::toFile() const {
    struct stat info {};
    return ::fstat(m_descriptor, &info) == 0 && S_ISREG(info.st_mode);
}

void Output::bytes(std::string_view s) {
    while (!s.empty()) {
        makeRoom(1);
        const std::size_t length = std::min(s.size(), kSize - m_used);
        std::memcpy(m_buffer.get() + m_used, s.data(), length);
        m_used += length;
        s.remove_prefix(length);
    }
}

template <class Put> void Output::units(TextView s, Put put) {
    while (!s.empty()) {
        makeRoom(platform::kRoomForUnits);
        m_used += put(s, std::span(m_buffer.get() + m_used, kSize - m_used));
    }
}

void Output::plain(TextView s) { units(s, platform::putUtf8Units); }

void Output::json(TextView s) {
    bytes("\"");
    units(s, platform::putJsonUnits);
    bytes("\"");
}

void Output::flush() {
    std::size_t done = 0;
    while (!m_failed && done < m_used) {
        const ssize_t written = ::write(m_descriptor, m_buffer.get() + done, m_used - done);
        if (written > 0) {
            done += static_cast<std::size_t>(written);
        } else if (written == 0 || errno != EINTR) {
            m_failed = true;
        }
    }
    m_used = 0;
}

bool Output::finish() {
    flush();
    return !m_failed;
}

}  // namespace cli
