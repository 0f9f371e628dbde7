// cli/Percent.h: a percentage as it was written, compared without rounding.
#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace cli {

class Percent {
public:
    // Digits with at most one decimal point among them, such as 80, 99.5 or .5; up to 18 digits on
    // either side of the point. Nothing else is one.
    [[nodiscard]] static std::optional<Percent> parse(std::string_view s);

    // Whether 100 * part / whole is lower. A whole of 0 never is.
    [[nodiscard]] bool isAbove(std::uint64_t part, std::uint64_t whole) const;

private:
    std::uint64_t m_whole = 0;
    std::uint64_t m_fraction = 0;  // in units of 10 to the power -18
};

}  // namespace cli
