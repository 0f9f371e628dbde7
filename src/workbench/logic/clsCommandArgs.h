// workbench/logic/clsCommandArgs.h: a command line split into its arguments.
#pragma once
#include "platform/base/text.h"

#include <vector>

class clsCommandArgs {
public:
    // Takes the place of what was parsed before. Blanks separate arguments; what is between double
    // quotes may hold blanks, and the closing quote ends the argument, so a"b c"d is ab c, and d.
    // An argument that would be empty is none. Raises 6, "clsCommandArgs.ParseCommand", "Overflow"
    // when more than 32,767 units are left without the blanks at the ends.
    void ParseCommand(TextView sCommand);

    [[nodiscard]] const std::vector<Text>& Args() const { return m_oArgs; }

    // Of the first argument that holds the name and ":", what is left without each of them; empty
    // when there is none. Case counts.
    [[nodiscard]] Text GetValue(TextView sNomePar) const;
    [[nodiscard]] bool ExistParName(TextView sNomePar) const { return !GetValue(sNomePar).empty(); }

private:
    [[nodiscard]] int pvFindArg(TextView sName) const;

    std::vector<Text> m_oArgs;
};
