#include "workbench/logic/clsCommandArgs.h"

#include "langfile/foldedText.h"
#include "platform/base/failure.h"

#include <limits>

namespace {

Text withColon(TextView sName) {
    Text name(sName);
    if (!name.ends_with(u':')) name += u':';
    return name;
}

}  // namespace

void clsCommandArgs::ParseCommand(TextView sCommand) {
    constexpr std::int32_t kOverflow = 6;
    constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
    m_oArgs.clear();
    const TextView command = trimBlanks(sCommand);
    if (command.size() > kMost) {
        throw Failure(kOverflow, u"clsCommandArgs.ParseCommand", u"Overflow");
    }
    Text argument;
    const auto endArgument = [&] {
        if (!argument.empty()) m_oArgs.push_back(argument);
        argument.clear();
    };
    for (std::size_t i = 0; i < command.size(); ++i) {
        if (command[i] == u' ') {
            endArgument();
        } else if (command[i] == u'"') {
            const std::size_t end = std::min(command.find(u'"', i + 1), command.size());
            argument += command.substr(i + 1, end - i - 1);
            i = end;
            endArgument();
        } else {
            argument += command[i];
        }
    }
    endArgument();
}

int clsCommandArgs::pvFindArg(TextView sName) const {
    const Text name = withColon(sName);
    for (std::size_t i = 0; i < m_oArgs.size(); ++i) {
        if (m_oArgs[i].find(name) != Text::npos) return static_cast<int>(i) + 1;
    }
    return -1;
}

Text clsCommandArgs::GetValue(TextView sNomePar) const {
    const Text name = Text(sNomePar) + u':';
    const int found = pvFindArg(name);
    if (found < 0) return {};
    Text value = m_oArgs[static_cast<std::size_t>(found) - 1];
    for (std::size_t at = value.find(name); at != Text::npos; at = value.find(name, at)) {
        value.erase(at, name.size());
    }
    return value;
}
