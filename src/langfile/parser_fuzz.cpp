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

bool hasLoneLineEnd(const Text& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        if (pair)
            ++i;
        else if (text[i] == u'\r' || text[i] == u'\n')
            return true;
    }
    return false;
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

    // A lone CR or LF inside a line can be taken for the file's line end at the next reading.
    // Without any, writing settles: a text of one line gains a line end once, and from then on
    // nothing moves.
    if (hasLoneLineEnd(text)) return 0;
    clsFileIniEx again;
    hold(again.LoadFromString(document.toText(u"\r\n", true)), "written text can be loaded");
    clsFileIniEx third;
    hold(third.LoadFromString(again.toText(u"\r\n", true)), "and once more");
    hold(again.toText(u"\r\n", true) == third.toText(u"\r\n", true), "writing settles");
    return 0;
}
