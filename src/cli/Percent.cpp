#include "cli/Percent.h"

#include <algorithm>

namespace cli {
namespace {

constexpr std::size_t kDigits = 18;

std::optional<std::uint64_t> number(std::string_view digits) {
    if (digits.size() > kDigits) return std::nullopt;
    std::uint64_t value = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') return std::nullopt;
        value = value * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return value;
}

}  // namespace

std::optional<Percent> Percent::parse(std::string_view s) {
    const std::size_t point = std::min(s.find('.'), s.size());
    const std::string_view left = s.substr(0, point);
    const std::string_view right = s.substr(std::min(point + 1, s.size()));
    const std::optional<std::uint64_t> whole = number(left);
    std::optional<std::uint64_t> fraction = number(right);
    if (!whole || !fraction || (left.empty() && right.empty())) return std::nullopt;
    for (std::size_t digits = right.size(); digits < kDigits; ++digits) *fraction *= 10;
    Percent percent;
    percent.m_whole = *whole;
    percent.m_fraction = *fraction;
    return percent;
}

bool Percent::isAbove(std::uint64_t part, std::uint64_t whole) const {
    __extension__ using Wide = unsigned __int128;
    constexpr Wide kOne = 1'000'000'000'000'000'000;
    if (m_whole > 100) return whole > 0;
    return Wide{part} * 100 * kOne < (m_whole * kOne + m_fraction) * whole;
}

}  // namespace cli
