#include "cli/edits.h"

#include <nlohmann/json.hpp>

namespace cli {
namespace {

struct Member {
    const char* name;
    Text Edit::*text;
};
constexpr Member kMembers[] = {
    {"section", &Edit::section}, {"key", &Edit::key}, {"translation", &Edit::translation}};

// What is wrong with the line, or nothing.
std::optional<Text> readLine(std::string_view bytes, Edit& edit) {
    // The parser would take a NUL for the end of its text.
    const nlohmann::json value = bytes.find('\0') == std::string_view::npos
                                     ? nlohmann::json::parse(bytes, nullptr, false)
                                     : nlohmann::json();
    if (!value.is_object()) return u"this is no JSON object in UTF-8";
    for (const Member& member : kMembers) {
        const auto found = value.find(member.name);
        if (found == value.end() || !found->is_string()) {
            return u"there is no text \"" + fromUtf8(member.name) + u"\"";
        }
        edit.*member.text = fromUtf8(found->get_ref<const std::string&>());
    }
    if (edit.translation.find_first_of(u"\r\n") != Text::npos) {
        return u"the translation holds a line break";
    }
    // The list of a later run would cut the text there, and a save would write what is left.
    if (edit.translation.find(u'\t') != Text::npos) return u"the translation holds a tab";
    return std::nullopt;
}

}  // namespace

Edits parseEdits(std::string_view bytes) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
    Edits result;
    for (std::size_t line = 1; !bytes.empty(); ++line) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view content = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        if (content.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        Edit edit{line, {}, {}, {}};
        if (const std::optional<Text> wrong = readLine(content, edit)) {
            result.error = {line, *wrong};
            break;
        }
        result.edits.push_back(std::move(edit));
    }
    return result;
}

}  // namespace cli
