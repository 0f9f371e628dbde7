#include "file/clsUniFile.h"

#include "platform/base/codepages.h"
#include "platform/base/files.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"
#include "support/raised.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using platform::test::FileOp;

std::string pattern(std::size_t count) {
    std::string bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 31 + i / 256);
    return bytes;
}

// A directory with one file, open for reading.
struct OpenedFile {
    test::TempDir dir;
    clsUniFile file;
    explicit OpenedFile(const std::string& bytes) {
        dir.write("f", bytes);
        EXPECT_TRUE(file.OpenFileRead(dir.inside("f")));
    }
};

std::string readAny(clsUniFile& file, std::size_t count) {
    std::string bytes(count, '\0');
    EXPECT_TRUE(file.ReadAny(bytes.data(), static_cast<std::int32_t>(count)));
    return bytes;
}

}  // namespace

TEST(clsUniFile, ReadsByteByByteAcrossTheCachesBorders) {
    for (const std::size_t size : {1, 16383, 16384, 16385, 16386, 40'000}) {
        for (const bool cache : {true, false}) {
            if (!cache && size > 1 && size != 16385) continue;
            OpenedFile opened(pattern(size));
            opened.file.UseCache(cache);
            std::string read;
            std::uint8_t b = 0;
            EXPECT_FALSE(opened.file.Eof());
            while (opened.file.ReadByte(b)) read += static_cast<char>(b);
            EXPECT_EQ(read, pattern(size));
            EXPECT_TRUE(opened.file.Eof());
            EXPECT_EQ(opened.file.GetFilePos(), static_cast<std::int64_t>(size));
        }
    }
}

TEST(clsUniFile, AReadBeyondTheEndFails) {
    OpenedFile opened(pattern(100));
    clsUniFile& file = opened.file;
    std::string target(20'000, '.');
    EXPECT_FALSE(file.ReadAny(target.data(), 20'000));
    EXPECT_EQ(target, pattern(100) + std::string(19'900, '.'));

    file.SetFilePos(0);
    target.assign(20'000, '.');
    (void)readAny(file, 60);
    EXPECT_FALSE(file.ReadAny(target.data(), 41));  // the 40 that there were stand in front
    EXPECT_EQ(target.substr(0, 41), pattern(100).substr(60) + ".");

    EXPECT_FALSE(file.ReadAny(target.data(), 0));
    EXPECT_FALSE(file.ReadAny(target.data(), -1));
    Bytes none;
    EXPECT_FALSE(file.ReadBytes(none));
}

TEST(clsUniFile, WritesGatherUntilTheCacheIsFull) {
    const test::TempDir dir;
    const std::string all = pattern(60'000);
    const auto diskSize = [&] { return std::filesystem::file_size(dir.path() / "f"); };
    {
        clsUniFile file;
        ASSERT_TRUE(file.OpenFileWrite(dir.inside("f"), true));
        EXPECT_TRUE(file.Eof());
        EXPECT_TRUE(file.WriteAny(all.data(), 4));
        EXPECT_EQ(file.LOF(), 4);
        EXPECT_EQ(file.GetFilePos(), 4);
        EXPECT_TRUE(file.WriteAny(all.data() + 4, 16'380));
        EXPECT_EQ(diskSize(), 0U);
        EXPECT_TRUE(file.WriteByte(static_cast<std::uint8_t>(all[16'384])));
        EXPECT_EQ(diskSize(), 16'384U);
        EXPECT_TRUE(file.WriteAny(all.data() + 16'385, 20'000));  // with the one before it
        EXPECT_EQ(diskSize(), 36'385U);
        EXPECT_TRUE(file.WriteAny(all.data() + 36'385, 10'000));
        EXPECT_TRUE(file.WriteAny(all.data() + 46'385, 10'000));  // fills the cache, and the rest
        EXPECT_EQ(diskSize(), 52'769U);
        EXPECT_TRUE(file.Flush());
        EXPECT_EQ(diskSize(), 56'385U);
        EXPECT_TRUE(file.WriteAny(all.data() + 56'385, 3'615));
        EXPECT_FALSE(file.WriteAny(all.data(), 0));
        EXPECT_FALSE(file.WriteBytes({}));
    }  // dropping the object saves
    EXPECT_EQ(dir.read("f"), all);
}

// The file and the object's doings once more, in memory.
struct FileModel {
    std::string bytes;
    std::size_t pos = 0;
    void write(const std::string& block) {
        bytes.resize(std::max(bytes.size(), pos + block.size()));
        bytes.replace(pos, block.size(), block);
        pos += block.size();
    }
};

TEST(clsUniFile, AgreesWithAFileInMemory) {
    std::mt19937 random(5);
    const auto anySize = [&]() -> std::size_t {
        constexpr std::size_t kSizes[] = {1, 2, 500, 8'192, 16'383, 16'384, 16'385, 16'386, 40'000};
        return random() % 3 == 0 ? 1 + random() % 20'000 : kSizes[random() % std::size(kSizes)];
    };
    for (int round = 0; round < 20; ++round) {
        const test::TempDir dir;
        FileModel model{pattern(random() % 100'000)};
        dir.write("f", model.bytes);
        clsUniFile file;
        ASSERT_TRUE(file.OpenFileAppend(dir.inside("f")));
        model.pos = model.bytes.size();
        bool wasRead = false;  // then a write needs its place
        for (int step = 0; step < 300; ++step) {
            const std::size_t count = anySize();
            switch (random() % 8) {
            case 0:
            case 1:
            case 2: {
                std::string block(count, '\0');
                const bool fits = count <= model.bytes.size() - model.pos;
                ASSERT_EQ(file.ReadAny(block.data(), static_cast<std::int32_t>(count)), fits);
                if (fits) {
                    ASSERT_EQ(block, model.bytes.substr(model.pos, count));
                    model.pos += count;
                    wasRead = true;
                    break;
                }
                [[fallthrough]];  // where a failed read ends is its own affair
            }
            case 3:
                model.pos = random() % (model.bytes.size() + 1);
                if (random() % 2 == 0) {
                    file.SetFilePos(static_cast<std::int64_t>(model.pos));
                } else {
                    file.SetFilePos(static_cast<std::int64_t>(model.pos) -
                                        static_cast<std::int64_t>(model.bytes.size()),
                                    fpfEnd);
                }
                wasRead = false;
                break;
            case 4:
                file.UseCache(!file.UseCache());
                break;
            default: {
                if (wasRead) file.SetFilePos(file.GetFilePos());
                wasRead = false;
                const std::string block = pattern(count);
                ASSERT_TRUE(file.WriteAny(block.data(), static_cast<std::int32_t>(count)));
                model.write(block);
            }
            }
            ASSERT_EQ(file.GetFilePos(), static_cast<std::int64_t>(model.pos)) << step;
            if (random() % 10 == 0) {
                ASSERT_TRUE(file.Flush());
                ASSERT_EQ(file.LOF(), static_cast<std::int64_t>(model.bytes.size()));
                ASSERT_EQ(file.Eof(), model.pos == model.bytes.size());
            }
        }
        file.CloseFile();
        ASSERT_EQ(dir.read("f"), model.bytes);
    }
}

TEST(clsUniFile, PositionsAreLogicalAndOf64Bits) {
    OpenedFile opened(pattern(100));
    clsUniFile& file = opened.file;
    (void)readAny(file, 1);
    EXPECT_EQ(file.GetFilePos(), 1);
    EXPECT_EQ(file.RealFilePos(), 100);
    (void)readAny(file, 9);
    file.UseCache(false);
    EXPECT_EQ(file.RealFilePos(), 10);
    file.SetFilePos(5, fpfCurrent);
    EXPECT_EQ(file.GetFilePos(), 15);
    for (const std::int64_t pos : {0LL, 0xFFFF'FFFFLL, 0x1'0000'0000LL, 0x5'8000'0001LL}) {
        file.SetFilePos(pos);
        EXPECT_EQ(file.RealFilePos(), pos);
    }
    file.SetFilePos(-1);  // there is no such place
    EXPECT_EQ(file.RealFilePos(), 0x5'8000'0001LL);
    EXPECT_TRUE(file.Eof());

    clsUniFile closed;
    closed.SetFilePos(1);
    std::uint8_t b = 0;
    EXPECT_EQ(closed.LOF(), 0);
    EXPECT_EQ(closed.GetFilePos(), -1);
    EXPECT_EQ(closed.RealFilePos(), -1);
    EXPECT_TRUE(closed.Eof());
    EXPECT_FALSE(closed.Flush() || closed.SetEndOfFileHere() || closed.ReadByte(b) ||
                 closed.WriteByte(b));
}

TEST(clsUniFile, AnObjectHoldsOneFileAtATime) {
    const test::TempDir dir;
    dir.write("f", "12345");
    const std::size_t before = platform::test::openFileHandles();
    {
        clsUniFile file;
        EXPECT_FALSE(file.OpenFileRead(dir.inside("none")));
        EXPECT_FALSE(file.OpenFileRead(dir.inside("")));  // a directory
        EXPECT_FALSE(file.IsFileOpen());
        EXPECT_TRUE(file.OpenFileRead(dir.inside("f")));
        EXPECT_EQ(file.OpenedFileName(), dir.inside("f"));
        for (const auto& open : {+[](clsUniFile&f, const Text&p) { return f.OpenFileRead(p); },
                                 +[](clsUniFile&f, const Text&p) { return f.OpenFileWrite(p); },
                                 +[](clsUniFile&f, const Text&p) { return f.OpenFileAppend(p); }}) {
            EXPECT_EQ(test::raised([&] { (void)open(file, dir.inside("g")); }),
                      "clsUniFile.OpenFile: A file is already open!");
        }
        EXPECT_EQ(readAny(file, 5), "12345");
        file.CloseFile();
        EXPECT_EQ(file.OpenedFileName(), u"");
        EXPECT_EQ(file.OpenedFileHandle(), 0);
        EXPECT_TRUE(file.OpenFileAppend(dir.inside("new")));
        EXPECT_TRUE(file.WriteByte('n'));
        file.CloseFile();
        EXPECT_TRUE(file.OpenFileAppend(dir.inside("f")));
        EXPECT_TRUE(file.WriteByte('6'));
        EXPECT_EQ(platform::test::openFileHandles(), before + 1);
    }
    EXPECT_EQ(platform::test::openFileHandles(), before);
    EXPECT_EQ(dir.read("new"), "n");
    EXPECT_EQ(dir.read("f"), "123456");
}

TEST(clsUniFile, TheEndOfTheFileCanBeSet) {
    const test::TempDir dir;
    dir.write("f", pattern(100));
    clsUniFile file;
    ASSERT_TRUE(file.OpenFileAppend(dir.inside("f")));
    file.SetFilePos(10);
    EXPECT_TRUE(file.WriteByte('x'));
    EXPECT_TRUE(file.SetEndOfFileHere());
    EXPECT_EQ(file.LOF(), 11);
    EXPECT_EQ(dir.read("f"), pattern(10) + "x");
}

TEST(clsUniFile, FailuresShowAndLeaveTheFileOpen) {
    const platform::test::HookScope hooks;
    OpenedFile opened(pattern(100));
    std::uint8_t b = 0;
    platform::test::failNext(FileOp::Read);
    EXPECT_FALSE(opened.file.ReadByte(b));
    EXPECT_TRUE(opened.file.ReadByte(b));

    clsUniFile full;
    ASSERT_TRUE(full.OpenFileWrite(u"\\dev\\full"));
    EXPECT_TRUE(full.WriteLong(1));
    EXPECT_FALSE(full.Flush());
    EXPECT_TRUE(full.Flush());  // what could not be written is dropped
    EXPECT_FALSE(full.WriteBytes(Bytes(16'385)));
    EXPECT_TRUE(full.WriteBytes(Bytes(16'384)));
    EXPECT_FALSE(full.WriteBytes(Bytes(2)));
    EXPECT_TRUE(full.IsFileOpen());
}

TEST(clsUniFile, TypedValuesAreLittleEndian) {
    const test::TempDir dir;
    clsUniFile file;
    ASSERT_TRUE(file.OpenFileWrite(dir.inside("f")));
    EXPECT_TRUE(file.WriteByte(200) && file.WriteInt(-2) && file.WriteLong(-3) &&
                file.WriteDouble(-1.5) && file.WriteBool(true) && file.WriteBool(false) &&
                file.WriteByte(2));
    file.CloseFile();
    EXPECT_EQ(dir.read("f"),
              std::string("\xC8\xFE\xFF\xFD\xFF\xFF\xFF\0\0\0\0\0\0\xF8\xBF\1\0\2", 18));

    ASSERT_TRUE(file.OpenFileRead(dir.inside("f")));
    std::uint8_t byte = 0;
    std::int16_t number = 0;
    std::int32_t longNumber = 0;
    double real = 0;
    EXPECT_TRUE(file.ReadByte(byte) && file.ReadInt(number) && file.ReadLong(longNumber) &&
                file.ReadDouble(real));
    EXPECT_EQ(byte, 200);
    EXPECT_EQ(number, -2);
    EXPECT_EQ(longNumber, -3);
    EXPECT_EQ(real, -1.5);
    for (const bool expected : {true, false, false}) {  // the last is the byte 2
        bool b = !expected;
        EXPECT_TRUE(file.ReadBool(b));
        EXPECT_EQ(b, expected);
    }
    bool b = true;
    EXPECT_FALSE(file.ReadBool(b));
}

TEST(clsUniFile, StringsStandBehindTheCountOfTheirBytes) {
    const platform::test::HookScope hooks;
    platform::setAnsiCodePage(1252);
    const Text s = u"a\u20AC\u0416";
    const struct {
        std::int32_t encoding;
        std::string bytes;
        Text back;
    } cases[] = {
        {ufeAnsi, {"\3\0\0\0a\x80?", 7}, u"a\u20AC?"},
        {ufeUnicode, {"\6\0\0\0a\0\xAC\x20\x16\4", 10}, s},
        {ufeUTF8, {"\6\0\0\0a\xE2\x82\xAC\xD0\x96", 10}, s},
    };
    for (const auto& c : cases) {
        const test::TempDir dir;
        clsUniFile file;
        ASSERT_TRUE(file.OpenFileWrite(dir.inside("f")));
        EXPECT_TRUE(file.WriteNumCharsAndString(s, c.encoding));
        EXPECT_FALSE(file.WriteNumCharsAndString(u"", c.encoding));
        EXPECT_FALSE(file.WriteNumCharsAndString(s, 3));
        file.CloseFile();
        EXPECT_EQ(dir.read("f"), c.bytes + std::string(4, '\0'));

        ASSERT_TRUE(file.OpenFileRead(dir.inside("f")));
        Text back = u"old";
        EXPECT_TRUE(file.ReadNumCharsAndString(back, c.encoding));
        EXPECT_EQ(back, c.back);
        EXPECT_FALSE(file.ReadNumCharsAndString(back, c.encoding));
        EXPECT_EQ(back, u"");
        EXPECT_TRUE(file.Eof());
        file.SetFilePos(0);
        EXPECT_FALSE(file.ReadNumCharsAndString(back, 3));
        EXPECT_EQ(file.GetFilePos(), 4);
    }
    // Counts that promise more than there is.
    for (const auto* count : {"\x0B\0\0\0", "\xFF\xFF\xFF\x7F", "\xFF\xFF\xFF\xFF"}) {
        OpenedFile opened(std::string(count, 4) + "0123456789");
        Text back = u"old";
        EXPECT_FALSE(opened.file.ReadNumCharsAndString(back, ufeAnsi));
        EXPECT_EQ(back, u"");
    }
}
