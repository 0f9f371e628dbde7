// Gives the clipboard the text of standard input, as another program would from which a person has
// copied it, and stays until it is ended.
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "platform/window/testhooks.h"

#include <cstdio>
#include <iostream>
#include <iterator>

int main(int argc, char** argv) {
    try {
        platform::Application application(argc, argv, {});
        const std::string text(std::istreambuf_iterator<char>(std::cin), {});
        platform::test::setClipboardText(fromUtf8(text));
        std::puts("ready");
        std::fflush(stdout);
        return application.run();
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", toUtf8(failure.message).c_str());
        return 1;
    }
}
