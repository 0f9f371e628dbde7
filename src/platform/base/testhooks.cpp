#include "platform/base/testhooks.h"

#include "platform/base/codepages.h"
#include "platform/base/internal.h"

namespace platform {

constinit internal::Hooks internal::hooks;

using internal::hooks;

bool internal::takeFault(test::FileOp op) {
    Hooks::Fault& fault = hooks.faults[static_cast<std::size_t>(op)];
    if (fault.times == 0) return false;
    if (fault.skip > 0) {
        --fault.skip;
        return false;
    }
    --fault.times;
    return true;
}

namespace test {
namespace {

void undoAll() {
    clearFaults();
    setVersion(std::nullopt);
    failVersionQuery(false);
    setTickCount(std::nullopt);
    setLocale(std::nullopt);
    (void)setAnsiCodePage(std::nullopt);
}

}  // namespace

HookScope::HookScope() { undoAll(); }
HookScope::~HookScope() { undoAll(); }

void setVersion(std::optional<OSVERSIONINFOA> version) { hooks.version = version; }
void failVersionQuery(bool fails) { hooks.versionQueryFails = fails; }
void setTickCount(std::optional<std::uint32_t> milliseconds) { hooks.tickCount = milliseconds; }

void setLocale(std::optional<std::string> locale) {
    hooks.locale = std::move(locale);
    internal::forgetCodePage();
    internal::forgetCollator();
    internal::forgetNumbers();
}

void failNext(FileOp op, int times, int skip) {
    hooks.faults[static_cast<std::size_t>(op)] = {.skip = skip, .times = times};
    hooks.faultsArmed = true;
}

void failReadsAfter(std::uint64_t bytes) {
    hooks.bytesToRead = bytes;
    hooks.faultsArmed = true;
}

void failWritesAfter(std::uint64_t bytes) {
    hooks.bytesToWrite = bytes;
    hooks.faultsArmed = true;
}

void clearFaults() {
    hooks.faultsArmed = false;
    hooks.faults = {};
    hooks.bytesToRead.reset();
    hooks.bytesToWrite.reset();
}

}  // namespace test
}  // namespace platform
