// A main file, a file on disk and translations: the road of a save, with the laws that it keeps.
#include "langfile/clsFileIniEx.h"
#include "langfile/simpleDocument_test.h"
#include "platform/base/codepages.h"
#include "platform/base/paths.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <utility>

namespace {

void hold(bool law, const char* words) {
    if (law) return;
    std::fprintf(stderr, "law broken: %s\n", words);
    std::abort();
}

// Text with CR LF at the line ends and no other CR or LF, and without the control units from 80 on,
// which count as narrow and which code page 1252 yet cannot hold.
Text lines(const std::uint8_t* data, std::size_t size) {
    Text text;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            text += u"\r\n";
        } else if (data[i] != '\r' && (data[i] < 0x80 || data[i] >= 0xA0)) {
            // The last bytes stand for units beyond 8 bits, so that both encodings are written.
            text += data[i] >= 0xF0 ? static_cast<char16_t>(0x0410 + data[i]) : data[i];
        }
    }
    return text;
}

class File {
public:
    File() : m_path("/dev/shm/quillmere-merge-fuzz-" + std::to_string(getpid())) {}
    ~File() { (void)std::remove(m_path.c_str()); }
    [[nodiscard]] Text path() const { return platform::pathFromSystem(m_path); }
    [[nodiscard]] std::string read() const {
        std::ifstream in(m_path, std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return std::move(all).str();
    }
    void remove() const { (void)std::remove(m_path.c_str()); }

private:
    std::string m_path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    platform::setAnsiCodePage(1252);
    static const File file;
    const bool keepEmpty = data[0] % 2 != 0;
    const std::size_t cutA = 4 + (size - 4) * data[1] / 256;
    const std::size_t cutB = cutA + (size - cutA) * data[2] / 256;
    const Text mainText = lines(data + 4, cutA - 4);
    const Text diskText = lines(data + cutA, cutB - cutA);
    Text translation = lines(data + cutB, size - cutB);
    std::erase_if(translation, [](char16_t c) { return c == u'\r' || c == u'\n'; });

    // The list: the main file's keys with a translation for some of them.
    clsFileIniEx main;
    hold(main.LoadFromString(mainText), "the main file can be loaded");
    clsFileIniEx list;
    simple::Document secondList;
    std::vector<TextView> names;
    std::vector<TextView> rows;
    main.GetSectionNames(names);
    unsigned turn = data[3];
    for (const TextView name : names) {
        main.GetSectionRows(name, rows);
        for (std::size_t r = 0; r < rows.size(); ++r) {
            const TextView key = main.GetSectionRowKey(rows, r);
            if (key.empty()) continue;
            const Text value = turn++ % 3 == 0 ? Text() : translation.substr(0, turn % 16);
            list.AddString(name, key, value);
            secondList.addString(Text(name), Text(key), value);
        }
    }

    // What stands on disk is written by the program itself, so that its encoding is one it reads.
    clsFileIniEx disk;
    hold(disk.LoadFromString(diskText), "the disk text can be loaded");
    hold(disk.Save(file.path(), u"\r\n", false, true), "the disk file can be written");
    const std::string before = file.read();
    if (!before.empty() && (before[0] == '\xEF' || (before[0] == '\xFF' && before[1] != '\xFE')))
        return 0;
    clsFileIniEx asRead;
    hold(asRead.Load(file.path()), "the disk file can be read");

    clsFileIniEx direct;
    hold(direct.Load(file.path()), "the disk file can be read again");
    list.forEachRow([&](const clsFileIniEx_Row& row) {
        if (!row.sKey.empty()) direct.AddString(row.sSection, row.sKey, row.sValue);
    });
    hold(list.Save(file.path(), u"\r\n", true, keepEmpty), "the list can be saved");
    const std::string first = file.read();
    hold(direct.Save(file.path(), u"\r\n", false, keepEmpty), "the disk document can be saved");
    hold(file.read() == first, "rows put into the disk document give the same");
    if (!first.empty() && (first[0] == '\xEF' || (first[0] == '\xFF' && first[1] != '\xFE')))
        return 0;

    simple::Document second;
    second.parse(asRead.toText(u"\r\n", true));
    secondList.mergeInto(second);
    clsFileIniEx saved;
    hold(saved.Load(file.path()), "the saved file can be read");
    clsFileIniEx expected;
    const Text written = second.written(u"\r\n", keepEmpty);
    bool narrow = true;
    for (const char16_t c : written) narrow = narrow && c < 256;
    const Bytes bytes = platform::textToBytes(written, 1252);
    hold(expected.LoadFromString(narrow ? platform::bytesToText(bytes.data(), bytes.size(), 1252)
                                        : written),
         "the expected text can be loaded");
    hold(saved.toText(u"\r\n", true) == expected.toText(u"\r\n", true),
         "the simple merge gives the same");

    asRead.forEachRow([&](const clsFileIniEx_Row& row) {
        const Text value = simple::trimmed(Text(row.sValue));
        if (row.sKey.empty() || value.empty() ||
            secondList.find(Text(row.sSection), Text(row.sKey)))
            return;
        hold(saved.GetString(row.sSection, row.sKey) == value,
             "a key that the list lacks keeps its value");
    });

    // A section loses its head one save after its last key without a value, and that may change
    // the line end that the next save finds at the end of the text.
    std::string last = first;
    bool stays = false;
    for (int save = 0; save < 4 && !stays; ++save) {
        hold(list.Save(file.path(), u"\r\n", true, keepEmpty), "the list can be saved again");
        const std::string earlier = std::exchange(last, file.read());
        stays = last == earlier;
    }
    hold(stays, "after a few saves the bytes stay");
    file.remove();
    return 0;
}
