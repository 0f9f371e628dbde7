// langfile/foldedText.h: how section names and keys are matched: blanks at the ends and case
// ignored.
#pragma once
#include "platform/base/text.h"

// Without U+0020 at both ends.
[[nodiscard]] inline TextView trimBlanks(TextView s) {
    while (!s.empty() && s.front() == u' ') s.remove_prefix(1);
    while (!s.empty() && s.back() == u' ') s.remove_suffix(1);
    return s;
}

// Without U+0020 and U+0009 at both ends.
[[nodiscard]] inline TextView trimBlanksAndTabs(TextView s) {
    const auto isBlank = [](char16_t unit) { return unit == u' ' || unit == u'\t'; };
    while (!s.empty() && isBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
    return s;
}

// Whether the lower-cased texts are the same, unit by unit. Nothing is built.
[[nodiscard]] bool equalFolded(TextView a, TextView b);

// Hash of the lower-cased text, without building it: equal for texts that equalFolded calls equal.
// Seeded for each process, so that no file can hold keys that all meet in one place of a table.
[[nodiscard]] std::uint64_t hashFolded(TextView s);

// Hash of a key within a section, from the hash of the section and the upper half of that of the
// key.
[[nodiscard]] std::uint64_t hashInSection(std::uint64_t sectionHash, std::uint32_t keyHash);
[[nodiscard]] inline std::uint32_t upperHalf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32);
}
