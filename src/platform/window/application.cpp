#include "platform/window/application.h"

#include "platform/base/failure.h"
#include "platform/window/screen_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace platform {
namespace {

FailureHandler g_failureHandler;
std::optional<int> g_quit;  // the code of PostQuitMessage, until the loop has ended with it

std::string describe(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        return toUtf8(known.source) + ": " + toUtf8(known.message);
    } catch (const std::exception& known) {
        return known.what();
    } catch (...) {
        return "a failure of an unknown kind";
    }
}

// ---- Is there a display? The library would end the process when there is none.

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

bool hasPlugin(const std::string& name) {
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) +
                       QStringLiteral("/platforms"));
    const QString pattern = QStringLiteral("libq%1*.so").arg(QString::fromStdString(name));
    return !plugins.entryList({pattern}, QDir::Files).isEmpty();
}

// The X server is asked through the library that the plugin itself uses, so that permission counts
// as well. It is loaded, not linked: without it there is no plugin that could need it.
class XConnection {
public:
    explicit XConnection(const std::string& display) {
        if (m_library == nullptr) return;
        const auto connect = reinterpret_cast<Connect>(dlsym(m_library, "xcb_connect"));
        const auto hasError =
            reinterpret_cast<HasError>(dlsym(m_library, "xcb_connection_has_error"));
        m_disconnect = reinterpret_cast<Disconnect>(dlsym(m_library, "xcb_disconnect"));
        if (connect == nullptr || hasError == nullptr || m_disconnect == nullptr) return;
        m_connection = connect(display.empty() ? nullptr : display.c_str(), nullptr);
        m_works = hasError(m_connection) == 0;
    }
    ~XConnection() {
        if (m_connection != nullptr) m_disconnect(m_connection);
        if (m_library != nullptr) dlclose(m_library);
    }
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    [[nodiscard]] bool works() const { return m_works; }

private:
    using Connect = void* (*)(const char*, int*);
    using HasError = int (*)(void*);
    using Disconnect = void (*)(void*);
    void* m_library = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    Disconnect m_disconnect = nullptr;
    void* m_connection = nullptr;
    bool m_works = false;
};

// A server starts over when its last client leaves, and answers nobody meanwhile: the connection
// that found it stays until the library has one of its own.
std::unique_ptr<XConnection> g_foundServer;

bool canReachX(const std::string& display) {
    auto connection = std::make_unique<XConnection>(display);
    if (!connection->works()) return false;
    g_foundServer = std::move(connection);
    return true;
}

bool canReachWayland() {
    std::string path = environment("WAYLAND_DISPLAY");
    if (path.empty()) path = "wayland-0";
    if (path.front() != '/') path = environment("XDG_RUNTIME_DIR") + '/' + path;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) return false;
    path.copy(address.sun_path, path.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) return false;
    const bool reached =
        ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    ::close(socket);
    return reached;
}

// The window systems that the library would try, the first that can be used counts.
std::vector<std::string> candidates(const ApplicationOptions& options) {
    if (options.offScreen) return {"offscreen"};
    std::vector<std::string> names;
    const std::string asked = environment("QT_QPA_PLATFORM");
    for (std::size_t at = 0; at < asked.size();) {
        const std::size_t end = std::min(asked.find(';', at), asked.size());
        const std::string name = asked.substr(at, end - at);  // "xcb:argument=value"
        if (!name.empty()) names.push_back(name.substr(0, name.find(':')));
        at = end + 1;
    }
    if (!names.empty()) return names;
    if (!environment("WAYLAND_DISPLAY").empty()) names.emplace_back("wayland");
    names.emplace_back("xcb");
    return names;
}

bool usable(const std::string& name) {
    if (!hasPlugin(name)) return false;
    if (name == "xcb") return canReachX(environment("DISPLAY"));
    if (name == "wayland") return canReachWayland();
    return true;
}

}  // namespace

void setFailureHandler(FailureHandler handler) { g_failureHandler = std::move(handler); }

void reportFailure(const std::exception_ptr& failure) noexcept {
    try {
        if (g_failureHandler) {
            const FailureHandler handler = g_failureHandler;  // it may set another one
            handler(failure);
            return;
        }
        std::fprintf(stderr, "A failure that nobody handled: %s\n", describe(failure).c_str());
    } catch (...) {  // the handler's own failure has nowhere else to go
        std::fprintf(stderr, "A failure that nobody handled: %s\n", describe(failure).c_str());
    }
}

Text Application::obstacle(const ApplicationOptions& options) {
    for (const std::string& name : candidates(options)) {
        if (usable(name)) return {};
    }
    const std::string display = environment("DISPLAY");
    if (display.empty() && environment("WAYLAND_DISPLAY").empty()) {
        return u"There is no display to show a window on: neither DISPLAY nor WAYLAND_DISPLAY is "
               u"set.";
    }
    return u"The display " + fromUtf8(display.empty() ? environment("WAYLAND_DISPLAY") : display) +
           u" cannot be used: it does not answer, does not let this program in, or the library's "
           u"part for it is not installed.";
}

struct Application::Impl {
    Impl(int& argc, char** argv) : application(argc, argv) {}
    QApplication application;
    std::unique_ptr<QObject> watch = watchDesktop();
};

Application::Application(int& argc, char** argv, const ApplicationOptions& options) {
    if (Text why = obstacle(options); !why.empty()) {
        throw Failure(kOwnError, u"Application", std::move(why));
    }
    if (options.offScreen) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        // Pictures are the same whatever desktop they are made on.
        for (const char* name : {"QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_FONT_DPI"}) {
            unsetenv(name);
        }
    } else if (environment("QT_QPA_PLATFORM").empty()) {
        // Only what has just answered, or the library could try the other one and give up.
        for (const std::string& name : candidates(options)) {
            if (!usable(name)) continue;
            setenv("QT_QPA_PLATFORM", name.c_str(), 1);
            break;
        }
    }
    // Pictures are drawn in the screen's own pixels, with sizes that follow its dots per inch.
    setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
    unsetenv("QT_SCALE_FACTOR");
    unsetenv("QT_SCREEN_SCALE_FACTORS");

    const QString name = toQt(options.name);
    QCoreApplication::setApplicationName(name);
    // The name of the program's desktop file, by which a desktop finds icon and group of a window.
    // No display name is set: it would be added to every caption.
    QGuiApplication::setDesktopFileName(name.toLower());
    m_impl = std::make_unique<Impl>(argc, argv);
    g_foundServer.reset();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    (void)takeDesktopLook();
}

Application::~Application() {
    for (;;) {
        HWND any = 0;
        windowTable().forEach([&](HWND hWnd, auto&) { any = hWnd; });
        if (any == 0) break;
        guarded([&] { DestroyWindow(any); });
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int Application::run() {
    const int code = g_quit ? *g_quit : QApplication::exec();
    g_quit.reset();
    return code;
}

void PostQuitMessage(int code) {
    g_quit = code;  // also for a loop that has not begun
    QCoreApplication::exit(code);
}

void pumpMessages() {
    if (qApp != nullptr) QCoreApplication::processEvents();
}

}  // namespace platform
