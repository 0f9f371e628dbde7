// langfile/clsFileIniEx_Row.h: one stored row of a language file, as seen from outside the
// document.
#pragma once
#include "platform/base/text.h"

#include <cstdint>

// The rows of one section, in file order, as a reference into the document that holds them.
struct RowList {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    std::uint32_t section = kNone;

    explicit operator bool() const { return section != kNone; }
    friend bool operator==(const RowList&, const RowList&) = default;
};

// The texts are views into the document: they hold until the row is changed or the document is
// loaded again or goes.
//
// Section row: sKey empty, cRows present. Key row: sKey not empty, no cRows. Plain row (comment,
// blank line, anything not understood): neither. A key row or plain row with an empty sSection is a
// root row.
struct clsFileIniEx_Row {
    TextView sLine;     // the row exactly as it is written to the file
    RowList cRows;      // a section row's rows
    TextView sKey;      // left of the separator, blanks included
    TextView sValue;    // right of the separator, blanks included
    TextView sSection;  // as it stood between the brackets

    // Copies the five members into oToFill, or into a new row; cRows stays a reference.
    clsFileIniEx_Row& Clone(clsFileIniEx_Row& oToFill) const { return oToFill = *this; }
    [[nodiscard]] clsFileIniEx_Row Clone() const { return *this; }
};
