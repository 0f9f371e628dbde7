#include "gfx/modCtlCommon_src_errors.h"

#include "file/clsUniFile.h"
#include "platform/base/failure.h"
#include "platform/base/process.h"
#include "platform/window/dialogs.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <exception>

namespace {

// Both are always compiled, so that a build with a switch set cannot be broken by neglect.
constexpr DiagnosticSwitches kBuiltIn = {.box = QUILLMERE_DEBUG_BOX != 0,
                                         .log = QUILLMERE_DEBUG_LOG != 0};

Failure failureBeingHandled() {
    const std::exception_ptr present = std::current_exception();
    if (!present) return {0, {}, {}};
    try {
        std::rethrow_exception(present);
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::exception& exception) {
        return {kOwnError, {}, fromUtf8(exception.what())};
    } catch (...) {
        return {kOwnError, {}, {}};
    }
}

Text timeOfDay() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    std::array<char, 16> text{};
    if (localtime_r(&now, &local) == nullptr) return {};
    const std::size_t length = std::strftime(text.data(), text.size(), "%H:%M:%S", &local);
    return fromUtf8({text.data(), length});
}

}  // namespace

Text ErrorText(TextView sWhere) {
    const Failure failure = failureBeingHandled();
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "%X", static_cast<unsigned>(failure.number));
    Text line(sWhere);
    line += u" (" + fromUtf8(number.data()) + u") - " + failure.message + u" ERL: 0";
    return line;
}

void LogDebug(TextView sMsg) {
    try {
        std::array<char16_t, 4096> program{};
        const std::uint32_t length = platform::GetModuleFileNameW(
            static_cast<std::uint32_t>(program.size()), program.data());
        const Text file = ufu_FilePath({program.data(), length}, false) + u"\\debug.txt";
        clsUniFile log;
        if (log.OpenFileAppend(file)) (void)log.WriteAnsiLine(timeOfDay() + u"> " + Text(sMsg));
    } catch (...) {  // NOLINT(bugprone-empty-catch): a log that cannot be written is no failure
    }
}

DiagnosticSwitches builtInSwitches() { return kBuiltIn; }

void ReportCaughtFailure(TextView sWhere, DiagnosticSwitches switches) {
    if (!switches.box && !switches.log) return;
    const Text line = ErrorText(sWhere);
    if (switches.box) (void)platform::MessageBoxW(0, line, u"Quillmere", platform::MB_ICONSTOP);
    if (switches.log) LogDebug(line);
}
