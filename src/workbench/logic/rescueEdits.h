// workbench/logic/rescueEdits.h: what was typed and could not be saved goes into a file of edits.
#pragma once
#include "workbench/logic/PairList.h"

// What stands in an editor that is still open, not yet confirmed.
struct OpenEdit {
    std::int32_t iRow = 0;
    Text sText;
};

// The rows that have changed since the list was loaded, and the open edit, as edits for
// `quillmere-cli apply`: one {"section":"","key":"","translation":""} a line, in UTF-8. Applied to
// the files as they were loaded, they give the list as it is. Translations that were cleared come
// last: another edit's duplicates would fill them again.
[[nodiscard]] std::string changedAsEdits(const PairList& list,
                                         const std::optional<OpenEdit>& open = {});

// Writes them into a new file of the folder, which is made if it is missing; the file's name tells
// of the translated file and the time (YYYYMMDD-HHMMSS). Gives its path; empty when nothing has
// changed. Raises FileFailure "Error writing file" when it cannot be written.
[[nodiscard]] Text rescueEdits(const PairList& list, TextView sFolder, TextView sTime,
                               const std::optional<OpenEdit>& open = {});
