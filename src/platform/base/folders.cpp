#include "platform/base/folders.h"

#include "platform/base/paths.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::string home() {
    if (std::string folder = variable("HOME"); !folder.empty()) return folder;
    const passwd* const user = ::getpwuid(::getuid());
    return user == nullptr || user->pw_dir == nullptr ? std::string() : user->pw_dir;
}

bool canBeStarted(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

}  // namespace

Text userStateFolder(std::string_view name) {
    std::string folder = variable("XDG_STATE_HOME");
    if (!folder.starts_with('/')) {  // a relative one is to be ignored
        folder = home();
        if (folder.empty()) return {};
        folder += "/.local/state";
    }
    while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
    return pathFromSystem(folder + "/" + std::string(name));
}

Text timeForFileName() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> text;
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &local);
    return fromUtf8({text.data(), length});
}

Text findProgram(std::initializer_list<std::string_view> names) {
    const std::string path = variable("PATH");
    for (const std::string_view name : names) {
        for (std::size_t at = 0; at < path.size();) {
            const std::size_t end = std::min(path.find(':', at), path.size());
            const std::string file = path.substr(at, end - at) + "/" + std::string(name);
            if (file.starts_with('/') && canBeStarted(file)) return pathFromSystem(file);
            at = end + 1;
        }
    }
    return {};
}

}  // namespace platform
