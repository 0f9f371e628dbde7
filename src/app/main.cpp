// quillmere [MAIN [TRANSLATED]]: the window program.
#include "file/ufu_files.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "platform/window/ending.h"
#include "platform/window/resources.h"
#include "workbench/frmMain.h"
#include "workbench/modMain.h"
#include "workbench/product.h"

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace {

constexpr const char* kHelp =
    "quillmere [MAIN [TRANSLATED]]\n"
    "\n"
    "Translates key=value language files in a window. MAIN is the complete file, TRANSLATED\n"
    "the one that is worked on; with both the pair is loaded at once.\n"
    "\n"
    "  --help     this text\n"
    "  --version  the version\n"
    "\n"
    "quillmere-cli does the same work without a window.\n";

void print(const std::string& text) { (void)std::fputs(text.c_str(), stdout); }

constexpr int kFailed = 1;
// As sysexits.h has them: used wrongly, and a service is not available.
constexpr int kWrongUsage = 64, kNoDisplay = 69;

void complain(TextView sMessage) {
    (void)std::fputs(("quillmere: " + toUtf8(sMessage) + "\n").c_str(), stderr);
}

// The process ends, asked for or not: what was typed stays, and who reads this knows where.
void keepEdits(const frmMain& window) {
    try {
        if (const Text sFile = window.KeepEdits(); !sFile.empty()) {
            complain(u"Your changes have not been saved. They have been kept in " + sFile);
        }
    } catch (const std::exception&) {
        complain(u"Your changes could not be kept: " + messageOf(std::current_exception()));
    }
}

// The names of files are in the command line of the process; the window system has no switches
// here.
int run(char* program) {
    if (const std::string page = platform::unusableCodePageVariable(); !page.empty()) {
        complain(fromUtf8(platform::kCodePageVariable + (": '" + page)) +
                 u"' is no known code page");
        return kWrongUsage;
    }
    if (const Text why = platform::Application::obstacle({}); !why.empty()) {
        complain(why);
        return kNoDisplay;
    }
    int argc = 1;
    char* argv[] = {program, nullptr};
    platform::Application application(argc, argv, {});
    (void)platform::setProgramIcon(u"quillmere");
    frmMain window;
    platform::setFailureHandler(
        [&window](const std::exception_ptr& failure) { window.ShowError(messageOf(failure)); });
    window.Closed = [] { platform::PostQuitMessage(0); };
    window.Start(ufu_UniCommandLine());
    const platform::EndWatch watch([&window] { keepEdits(window); });
    const int code = application.run();
    platform::setFailureHandler({});
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    // A file that may not grow is a failed write like any other, not the end of the process.
    std::signal(SIGXFSZ, SIG_IGN);
    const auto given = [&](std::string_view option) {
        return std::any_of(argv + 1, argv + argc, [&](const char* arg) { return arg == option; });
    };
    try {
        if (given("--help") || given("--version")) {
            print(given("--help") ? kHelp : "quillmere " + toUtf8(productVersion()) + "\n");
            return 0;
        }
        return run(argv[0]);
    } catch (const std::exception&) {
        complain(messageOf(std::current_exception()));
        return kFailed;
    }
}
