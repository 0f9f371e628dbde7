// Any text: the document and the simple one hold the same rows; reading gives what was parsed;
// writing and parsing again changes nothing more.
#include "langfile/clsFileIniEx.h"
#include "langfile/simpleDocument_test.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

void hold(bool law, const char* words) {
    if (law) return;
    std::fprintf(stderr, "law broken: %s\n", words);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Text text(size / 2, u'\0');
    if (!text.empty()) std::memcpy(text.data(), data, text.size() * 2);
    // Half of the inputs are narrow, so that the fuzzer finds the words of the format sooner.
    if (size % 2 != 0) text.assign(data, data + size);

    clsFileIniEx document;
    hold(document.LoadFromString(text), "every text can be loaded");
    simple::Document second;
    second.parse(text);
    hold(document.toText(u"\r\n", true) == second.written(u"\r\n", true), "same text");
    hold(document.toText(u"\n", false) == second.written(u"\n", false),
         "same text without empty values");

    std::size_t valued = 0;
    for (const simple::Section& section : second.sections) {
        for (const simple::Row& row : section.rows) {
            if (!row.key) continue;
            hold(document.GetString(section.name, *row.key, u"?") == simple::trimmed(row.value),
                 "same value");
            ++valued;
        }
    }
    std::vector<TextView> names;
    std::vector<TextView> rows;
    document.GetSectionNames(names);
    hold(names.size() == second.sections.size(), "same sections");
    std::size_t listed = 0;
    for (const TextView name : names) {
        document.GetSectionRows(name, rows);
        listed += rows.size();
    }
    hold(listed >= valued, "every key is listed");

    // Line ends other than the one written stay inside lines, where a second reading can take them
    // for the file's own; from then on nothing moves.
    clsFileIniEx again;
    hold(again.LoadFromString(document.toText(u"\r\n", true)), "written text can be loaded");
    clsFileIniEx third;
    hold(third.LoadFromString(again.toText(u"\r\n", true)), "and once more");
    clsFileIniEx fourth;
    hold(fourth.LoadFromString(third.toText(u"\r\n", true)), "and once more");
    hold(third.toText(u"\r\n", true) == fourth.toText(u"\r\n", true), "writing settles");
    return 0;
}
