// cli/Output.h: results on their way out, as UTF-8.
#pragma once
#include "platform/base/text.h"

#include <memory>

namespace cli {

// One buffer in front of a file descriptor. Nothing here raises: after a write that failed the rest
// is dropped, and finish() tells.
class Output {
public:
    explicit Output(int descriptor);

    // Whether the results go into a file, not to somebody who reads along.
    [[nodiscard]] bool toFile() const;

    void bytes(std::string_view s);
    void plain(TextView s);
    void json(TextView s);  // a string of JSON, in double quotes
    // Writes what is left. False when not everything got out.
    [[nodiscard]] bool finish();

private:
    static constexpr std::size_t kSize = 64 * 1024;

    template <class Put> void units(TextView s, Put put);
    void makeRoom(std::size_t bytes) {
        if (bytes > kSize - m_used) flush();
    }
    void flush();

    int m_descriptor;
    bool m_failed = false;
    std::size_t m_used = 0;
    std::unique_ptr<char[]> m_buffer;
};

}  // namespace cli
