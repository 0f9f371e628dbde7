#include "platform/base/process.h"

#include "platform/base/internal.h"
#include "platform/base/paths.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace platform {
namespace {

// All bytes of one of the files in which the system tells about the process; empty on failure.
std::string readAll(const char* systemPath) {
    const internal::Descriptor file(::open(systemPath, O_RDONLY | O_CLOEXEC));
    std::string all;
    char part[4096];
    while (file) {
        const ssize_t got =
            internal::retried([&] { return ::read(file.get(), part, sizeof part); });
        if (got < 0) return {};
        if (got == 0) break;
        all.append(part, static_cast<std::size_t>(got));
    }
    return all;
}

}  // namespace

std::uint32_t GetModuleFileNameW(std::uint32_t size, char16_t* buffer) {
    if (size == 0) return 0;
    std::string path(256, '\0');
    while (true) {
        const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return 0;
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            break;
        }
        path.resize(path.size() * 2);  // it may have been cut
    }
    const Text inside = pathFromSystem(path);
    const auto length = static_cast<std::uint32_t>(std::min<std::size_t>(inside.size(), size - 1));
    std::copy_n(inside.begin(), length, buffer);
    buffer[length] = u'\0';
    return length;
}

Text GetCommandLineW() {
    const std::string all = readAll("/proc/self/cmdline");
    Text line;
    std::string_view rest = all;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        const Text argument = pathFromSystem(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));

        const bool quoted = argument.empty() || argument.find(u' ') != Text::npos;
        if (!line.empty()) line += u' ';
        if (quoted) line += u'"';
        line += argument;
        if (quoted) line += u'"';
    }
    return line;
}

}  // namespace platform
