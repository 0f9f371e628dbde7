#include "cli/console.h"

#include "platform/base/testhooks.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace cli {
namespace {

namespace hooks = platform::test;

// Standard error is a terminal, or a pipe, as long as this lives.
class ErrorStream {
public:
    explicit ErrorStream(bool terminal) {
        std::array<int, 2> ends = {-1, -1};
        if (terminal) {
            ends[0] = ::posix_openpt(O_RDWR | O_NOCTTY);
            if (ends[0] >= 0 && ::grantpt(ends[0]) == 0 && ::unlockpt(ends[0]) == 0) {
                ends[1] = ::open(::ptsname(ends[0]), O_RDWR | O_NOCTTY);
            }
        } else {
            EXPECT_EQ(::pipe(ends.data()), 0);
        }
        EXPECT_GE(ends[1], 0);
        m_seen = ends[0];
        (void)::fcntl(m_seen, F_SETFL, O_NONBLOCK);
        m_before = ::dup(STDERR_FILENO);
        ::dup2(ends[1], STDERR_FILENO);
        ::close(ends[1]);
    }
    ~ErrorStream() {
        ::dup2(m_before, STDERR_FILENO);
        ::close(m_before);
        ::close(m_seen);
    }
    ErrorStream(const ErrorStream&) = delete;
    ErrorStream& operator=(const ErrorStream&) = delete;

    // What has come since the last call.
    [[nodiscard]] std::string take() const {
        std::array<char, 4096> room;
        const ssize_t got = ::read(m_seen, room.data(), room.size());
        return {room.data(), got > 0 ? static_cast<std::size_t>(got) : 0};
    }

private:
    int m_seen = -1;
    int m_before = -1;
};

const std::string kWiped = "\r\x1b[K";

std::string bar(const std::string& cells, const std::string& percent) {
    return "\r[" + cells + std::string(40 - cells.size(), ' ') + "] " + percent + " %\x1b[K";
}

TEST(ProgressBar, ShowsOnATerminalAloneOnceAPieceOfWorkTakesLong) {
    const hooks::HookScope scope;
    hooks::setTickCount(1000);
    const ErrorStream terminal(true);
    ProgressBar progress;
    progress.showWait(u"");
    hooks::setTickCount(1399);
    progress.pvSetProgress(20);
    EXPECT_EQ(terminal.take(), "");
    hooks::setTickCount(1400);
    progress.pvSetProgress(20);
    EXPECT_EQ(terminal.take(), "");  // as before
    progress.pvSetProgress(25);
    EXPECT_EQ(terminal.take(), bar("##########", "25"));
    progress.pvSetProgress(0);
    EXPECT_EQ(terminal.take(), kWiped);
    progress.closeWait();
    EXPECT_EQ(terminal.take(), "");

    hooks::setTickCount(60'000);  // whoever gives the edits has taken a minute
    progress.showWait(u"");
    progress.pvSetProgress(50);
    EXPECT_EQ(terminal.take(), "");
    hooks::setTickCount(60'500);
    progress.pvSetProgress(0);
    EXPECT_EQ(terminal.take(), "");
    progress.pvSetProgress(100);
    EXPECT_EQ(terminal.take(), bar(std::string(40, '#'), "100"));
    progress.closeWait();  // the work has failed
    EXPECT_EQ(terminal.take(), kWiped);

    const ErrorStream pipe(false);
    ProgressBar unseen;
    hooks::setTickCount(90'000);
    unseen.pvSetProgress(50);
    unseen.closeWait();
    EXPECT_EQ(pipe.take(), "");
}

}  // namespace
}  // namespace cli
