// grid/store/gridDump_test.h: values and failures of the grid as short texts, for tables of tests.
#pragma once
#include "grid/store/GridCell.h"
#include "support/raised.h"

#include <string>

// "empty", "int 5", "num 1.5", "true", "text abc"
inline std::string dump(const GridValue& v) {
    switch (v.type()) {
    case GridValueType::kEmpty:
        return "empty";
    case GridValueType::kInteger:
        return "int " + toUtf8(v.toText());
    case GridValueType::kDouble:
        return "num " + toUtf8(v.toText());
    case GridValueType::kBoolean:
        return v.toBoolean() ? "true" : "false";
    case GridValueType::kText:
        return "text " + toUtf8(v.text());
    }
    return "?";
}

// The fields of a record that differ from those of a fresh one: "text a back 5 selected".
inline std::string dump(const GridCell& cell) {
    std::string s = dump(cell.Value);
    const auto number = [&s](const char* name, std::int32_t value, std::int32_t usual) {
        if (value != usual) s += std::string(" ") + name + " " + std::to_string(value);
    };
    const CellPicture& picture = cell.Picture;
    number("back", cell.BackColor, -1);
    number("fore", cell.ForeColor, -1);
    if (picture.oPic != nullptr) s += " picture";
    if (!picture.bPicTransparent) s += " opaque";
    if (picture.bPicGrayed) s += " grayed";
    number("x", picture.lPicXTransp, 0);
    number("y", picture.lPicYTransp, 0);
    number("transparent", picture.lPicTranspColor, -1);
    if (cell.Selected) s += " selected";
    if (cell.Tag.type() != GridValueType::kEmpty) s += " tag " + dump(cell.Tag);
    number("textheight", cell.TextHeight, 0);
    number("height", cell.CellHeight, 0);
    number("offset", cell.OffsetRow, 0);
    return s;
}

// What the call gives, or the failure that it raises: see test::raised.
template <typename Call> std::string dumpOf(Call call) {
    std::string given = "done";
    const std::string failure = test::raised([&] {
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
        } else {
            given = dump(call());
        }
    });
    return failure == "nothing" ? given : failure;
}
