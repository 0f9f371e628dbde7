// cli/edits.h: edits as JSON Lines, {"section":"","key":"","translation":""}.
#pragma once
#include "platform/base/text.h"

#include <optional>

namespace cli {

struct Edit {
    std::size_t line;  // counted from 1
    Text section;
    Text key;
    Text translation;
};

struct EditError {
    std::size_t line;
    Text message;
};

struct Edits {
    std::vector<Edit> edits;         // up to the first line that is none
    std::optional<EditError> error;  // about that line
};

// Lines end in LF or CR LF; blank lines are skipped, and so is a byte order mark at the start.
// Further members of an object are ignored; of a member that is there twice the last one counts. No
// edit is a line that is not one object of JSON in UTF-8, lacks a member, has one that is no
// string, or a translation with a line break.
[[nodiscard]] Edits parseEdits(std::string_view bytes);

}  // namespace cli
