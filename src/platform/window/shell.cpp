#include "platform/window/shell.h"

#include "platform/base/paths.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/toolkit_internal.h"

#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QUrl>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

// "https://...", "mailto:...": a name of at least two letters and more in front of a colon.
bool isAddress(TextView s) {
    const std::size_t colon = s.find(u':');
    if (colon == TextView::npos || colon < 2) return false;
    const auto isLetter = [](char16_t c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    };
    for (std::size_t i = 0; i < colon; ++i) {
        const char16_t c = s[i];
        if (isLetter(c)) continue;
        const bool later = (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
        if (i == 0 || !later) return false;
    }
    return true;
}

std::intptr_t opened(const QUrl& url) {
    const bool handled = hooks().addressOpener
                             ? hooks().addressOpener(url.toEncoded().toStdString())
                             : QDesktopServices::openUrl(url);
    return handled ? SE_ERR_SUCCESS : SE_ERR_NOASSOC;
}

// Something that the system can run, not a document on a disk whose files all count as executable.
bool isProgram(const std::string& systemPath, const struct stat& state) {
    if (!S_ISREG(state.st_mode) || ::access(systemPath.c_str(), X_OK) != 0) return false;
    std::string start(4, '\0');
    std::ifstream(systemPath, std::ios::binary).read(start.data(), 4);
    return start == "\x7F"
                    "ELF" ||
           start.starts_with("#!");
}

std::intptr_t started(const std::string& program, TextView parameters, TextView directory) {
    const QString name = QFile::decodeName(program.c_str());
    if (QFile::encodeName(name) != program.c_str())
        return SE_ERR_FNF;  // the library cannot name it
    const QString place =
        directory.empty() ? QString() : QFile::decodeName(pathToSystem(directory).c_str());
    return QProcess::startDetached(name, QProcess::splitCommand(toQt(parameters)), place)
               ? SE_ERR_SUCCESS
               : SE_ERR_NOASSOC;
}

}  // namespace

std::intptr_t ShellExecuteW(HWND hWnd, TextView verb, TextView file, TextView parameters,
                            TextView directory, int show) {
    if (hooks().shell) {
        return hooks().shell(
            {hWnd, Text(verb), Text(file), Text(parameters), Text(directory), show});
    }
    const bool open = verb.empty() || verb == u"open";
    const bool explore = verb == u"explore";
    if (!open && !explore && verb != u"edit") return SE_ERR_NOASSOC;
    if (isAddress(file)) {
        return open ? opened(QUrl(toQt(file), QUrl::TolerantMode)) : SE_ERR_NOASSOC;
    }

    std::string path = pathToSystem(file);
    if (!path.empty() && path.front() != '/' && !directory.empty()) {
        const std::string around = pathToSystem(directory);
        path = around + (around.ends_with('/') ? "" : "/") + path;
    }
    struct stat state {};
    if (path.empty() || ::stat(path.c_str(), &state) != 0) return SE_ERR_FNF;
    if (path.front() != '/') {
        char* const whole = ::realpath(path.c_str(), nullptr);
        if (whole == nullptr) return SE_ERR_FNF;
        path = whole;
        std::free(whole);
    }
    if (explore && !S_ISDIR(state.st_mode)) {
        path.resize(std::max<std::size_t>(path.rfind('/'), 1));
        return opened(addressOf(path));
    }
    if (open && isProgram(path, state)) return started(path, parameters, directory);
    return opened(addressOf(path));
}

}  // namespace platform
