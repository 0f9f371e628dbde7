#include "gallery/commandLine.h"

#include "file/ufu_files.h"
#include "gallery/GalleryWindow.h"
#include "gfx/clsMEMDC.h"
#include "platform/base/failure.h"
#include "platform/base/paths.h"
#include "platform/window/application.h"
#include "platform/window/picturefile.h"

#include <cstdio>
#include <optional>
#include <span>

namespace gallery {
namespace {

constexpr const char* kUsage =
    "Usage: quillmere-gallery [--log]\n"
    "       quillmere-gallery --png DIR\n"
    "\n"
    "Shows, page by page, what the drawing and window layers of Quillmere can do.\n"
    "\n"
    "  --log      tell on standard output what is shown and what the dialogs answer\n"
    "  --png DIR  write the pages as pictures into DIR; needs no display\n"
    "  --help     this text\n";

struct Arguments {
    bool help = false, log = false;
    std::optional<std::string> pngDirectory;  // bytes of the system
};

// Without a value the arguments are wrong.
std::optional<Arguments> parse(std::span<char* const> given) {
    Arguments arguments;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const std::string_view argument = given[i];
        if (argument == "--help" || argument == "-h") {
            arguments.help = true;
        } else if (argument == "--log") {
            arguments.log = true;
        } else if (argument == "--png" && i + 1 < given.size() && *given[i + 1] != '\0') {
            arguments.pngDirectory = given[++i];
        } else {
            return std::nullopt;
        }
    }
    return arguments;
}

void complain(const std::string& what) {
    std::fprintf(stderr, "quillmere-gallery: %s\n", what.c_str());
}

// "Lines and frames", the fifth: 05-lines-and-frames.png
Text fileNameOf(std::size_t index, const Page& page) {
    std::string title;
    for (const char c : toUtf8(page.title)) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        title += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : plain ? c : '-';
    }
    const std::string number = std::to_string(index + 1);
    return fromUtf8((number.size() < 2 ? "0" : "") + number + '-' + title + ".png");
}

int showWindow(platform::Application& application, bool log) {
    const auto tell = [log](const std::string& line) {
        if (!log) return;
        std::printf("%s\n", line.c_str());
        std::fflush(stdout);
    };
    GalleryWindow window(tell);
    platform::ShowWindow(window.hWnd(), platform::SW_SHOW);
    return application.run();
}

}  // namespace

void writePages(TextView directory) {
    const auto refuse = [](TextView path) {
        throw Failure(kOwnError, u"writePages",
                      u"Cannot write " + platform::pathForDisplay(path) + u".");
    };
    if (!ufu_DirExist(directory) && !ufu_MkDir(directory)) refuse(directory);
    for (std::size_t i = 0; i < pages().size(); ++i) {
        const Text path = Text(directory) + u'\\' + fileNameOf(i, pages()[i]);
        clsMEMDC surface;
        surface.CreateDC(kPageSize.cx, kPageSize.cy);
        drawPage(surface.Hdc(), kPageSize, pages()[i]);
        if (!platform::writePngFile(surface.hBmp(), path)) refuse(path);
    }
}

int run(int argc, char** argv) {
    const std::optional<Arguments> arguments =
        parse(std::span(argv, static_cast<std::size_t>(argc)).subspan(argc > 0 ? 1 : 0));
    if (!arguments) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (arguments->help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    try {
        platform::ApplicationOptions options;
        options.name = u"Quillmere gallery";
        options.offScreen = arguments->pngDirectory.has_value();
        if (const Text obstacle = platform::Application::obstacle(options); !obstacle.empty()) {
            std::string sentence = toUtf8(obstacle);
            sentence.pop_back();  // the full stop
            complain(sentence + "; --png DIR writes the pages as pictures without one.");
            return 1;
        }
        platform::Application application(argc, argv, options);
        if (arguments->pngDirectory) {
            writePages(platform::pathFromSystem(*arguments->pngDirectory));
            return 0;
        }
        return showWindow(application, arguments->log);
    } catch (const Failure& failure) {
        complain(toUtf8(failure.message));
    } catch (const std::exception& failure) {
        complain(failure.what());
    }
    return 1;
}

}  // namespace gallery
